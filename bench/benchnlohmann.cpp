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

/// Empty when it cannot be read.
std::string textOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.tellg();
    if (size < 0)
        return {};
    std::string text(static_cast<std::size_t>(size), '\0');
    return file.seekg(0).read(text.data(), size) ? text : std::string();
}

template <typename Log>
bool read(const std::string& path, Log& log) {
    Handler<Log> handler(log);
    return json::sax_parse(textOf(path), &handler);
}

} // namespace

bool readWithNlohmann(const std::string& path, PlainLog& log) {
    return read(path, log);
}

bool readWithNlohmann(const std::string& path, IgnoredLog& log) {
    return read(path, log);
}

std::int64_t elementsWithNlohmann(const std::string& path) {
    std::int64_t count = 0;
    const auto discard = [&](int depth, json::parse_event_t event, const json& /*value*/) {
        const bool isElement = depth == 1 && event == json::parse_event_t::object_end;
        count += isElement ? 1 : 0;
        return !isElement;
    };
    const json rest = json::parse(textOf(path), discard, false);
    return rest.is_array() ? count : 0;
}

} // namespace bench
