#include "bench/benchpeers.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>

namespace bench {

namespace {

using nlohmann::json;

template <typename Log>
class Handler : public json::json_sax_t {
public:
    explicit Handler(Log& log)
        : mLog(log) {}

    bool null() override { return true; }

    bool boolean(bool) override { return true; }

    bool binary(json::binary_t&) override { return true; }

    bool number_integer(json::number_integer_t value) override {
        return report(static_cast<double>(value));
    }

    bool number_unsigned(json::number_unsigned_t value) override {
        return report(static_cast<double>(value));
    }

    bool number_float(json::number_float_t value, const std::string&) override {
        return report(value);
    }

    bool string(std::string& value) override {
        mLog.string(value);
        return true;
    }

    bool key(std::string& name) override {
        mLog.name(name);
        return true;
    }

    bool start_object(std::size_t) override {
        mLog.startObject();
        return true;
    }

    bool end_object() override {
        mLog.endObject();
        return true;
    }

    bool start_array(std::size_t) override {
        mLog.startArray();
        return true;
    }

    bool end_array() override {
        mLog.endArray();
        return true;
    }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }

private:
    bool report(double value) {
        mLog.number(value);
        return true;
    }

    Log& mLog;
};

template <typename Log>
bool read(const std::string& path, Log& log) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.tellg();
    if (size < 0)
        return false;
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!file.seekg(0).read(text.data(), size))
        return false;
    Handler<Log> handler(log);
    return json::sax_parse(text, &handler);
}

} // namespace

bool readWithNlohmann(const std::string& path, PlainLog& log) {
    return read(path, log);
}

bool readWithNlohmann(const std::string& path, IgnoredLog& log) {
    return read(path, log);
}

} // namespace bench
