#include "bench/benchpeers.h"

#include <rapidjson/filereadstream.h>
#include <rapidjson/reader.h>

#include <array>
#include <cstdio>

namespace bench {

namespace {

template <typename Log>
class Handler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler<Log>> {
public:
    explicit Handler(Log& log)
        : mLog(log) {}

    bool Default() { return true; } // null, true and false

    bool Int(int value) { return Double(value); }

    bool Uint(unsigned value) { return Double(value); }

    bool Int64(std::int64_t value) { return Double(static_cast<double>(value)); }

    bool Uint64(std::uint64_t value) { return Double(static_cast<double>(value)); }

    bool Double(double value) {
        mLog.number(value);
        return true;
    }

    bool String(const char* text, rapidjson::SizeType size, bool) {
        mLog.string({text, size});
        return true;
    }

    bool Key(const char* text, rapidjson::SizeType size, bool) {
        mLog.name({text, size});
        return true;
    }

    bool StartObject() {
        mLog.startObject();
        return true;
    }

    bool EndObject(rapidjson::SizeType) {
        mLog.endObject();
        return true;
    }

    bool StartArray() {
        mLog.startArray();
        return true;
    }

    bool EndArray(rapidjson::SizeType) {
        mLog.endArray();
        return true;
    }

private:
    Log& mLog;
};

template <typename Log>
bool read(const std::string& path, Log& log) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return false;
    std::array<char, 65536> buffer{};
    rapidjson::FileReadStream stream(file, buffer.data(), buffer.size());
    Handler<Log> handler(log);
    rapidjson::Reader reader;
    const bool done = !reader.Parse(stream, handler).IsError();
    std::fclose(file);
    return done;
}

} // namespace

bool readWithRapidJson(const std::string& path, PlainLog& log) {
    return read(path, log);
}

bool readWithRapidJson(const std::string& path, IgnoredLog& log) {
    return read(path, log);
}

} // namespace bench
