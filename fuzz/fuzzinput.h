#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

/// Takes decisions from the bytes of an input, front to back; zeros once they are used up.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : mAt(data)
        , mEnd(data + size) {}

    bool isUsedUp() const { return mAt == mEnd; }

    int byte() { return isUsedUp() ? 0 : *mAt++; }

    /// From 0 to `limit` - 1; `limit` is at most 256.
    int below(int limit) { return byte() % limit; }

private:
    const std::uint8_t* mAt;
    const std::uint8_t* mEnd;
};

} // namespace fuzz
