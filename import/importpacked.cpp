#include "import/importpacked.h"

#include <zlib.h>

namespace import {

namespace {

constexpr std::size_t UNPACKED_AT_ONCE = 1 << 18; // bytes unpacked at a time

/// The bytes that the characters of UTF-8 text are numbers of; empty when one is larger.
std::optional<std::string> bytesOf(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(text[i]);
        if (first < 0x80) {
            bytes += text[i];
        } else if ((first == 0xc2 || first == 0xc3) && i + 1 < text.size()) {
            const auto second = static_cast<unsigned char>(text[++i]);
            bytes += static_cast<char>(((first & 0x03) << 6) | (second & 0x3f));
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

/// Unpacks until the end of what was packed.
class Inflation {
public:
    explicit Inflation(std::string& packed) {
        mStream.next_in = reinterpret_cast<Bytef*>(packed.data());
        mStream.avail_in = static_cast<uInt>(packed.size());
        mIsReady = inflateInit(&mStream) == Z_OK;
    }

    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;

    ~Inflation() {
        if (mIsReady)
            inflateEnd(&mStream);
    }

    bool run(std::string& text, std::size_t largest) {
        int state = mIsReady ? Z_OK : Z_STREAM_ERROR;
        while (state == Z_OK && text.size() <= largest) {
            const std::size_t from = text.size();
            text.resize(from + UNPACKED_AT_ONCE);
            mStream.next_out = reinterpret_cast<Bytef*>(text.data() + from);
            mStream.avail_out = UNPACKED_AT_ONCE;
            state = inflate(&mStream, Z_NO_FLUSH);
            text.resize(text.size() - mStream.avail_out);
        }
        return state == Z_STREAM_END && text.size() <= largest;
    }

private:
    z_stream mStream{};
    bool mIsReady = false;
};

} // namespace

std::optional<std::string> unpacked(std::string_view text, std::size_t largest) {
    std::optional<std::string> packed = bytesOf(text);
    std::string plain;
    if (!packed || !Inflation(*packed).run(plain, largest))
        return std::nullopt;
    return plain;
}

} // namespace import
