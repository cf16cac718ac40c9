#include "json/jsonmarker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>

namespace {

using namespace std::string_view_literals;

/// The marks of `text` and its spare bytes, looked at in pieces of sizes that `seed` chooses.
std::vector<quint32> marksOf(json::Marker marker, const std::string& text, unsigned seed) {
    constexpr std::size_t SPARE = 64;
    const std::size_t size = text.size() - SPARE;
    std::mt19937 random(seed);
    json::text_state state;
    std::vector<quint32> marks;
    for (std::size_t from = 0; from < size;) {
        const std::size_t piece = std::min<std::size_t>(1 + random() % 300, size - from);
        std::vector<quint32> found(piece + SPARE);
        quint32* const end =
            marker(text.data() + from, static_cast<int>(piece), state, found.data());
        std::for_each(found.data(), end,
                      [&](quint32 mark) { marks.push_back(mark + static_cast<quint32>(from)); });
        from += piece;
    }
    return marks;
}

TEST(Marker, AllOfThisProcessorFindTheSameAsThePlainOne) {
    constexpr std::array ALPHABETS{
        "\"{}[]:, \t\n\v\f\r1a-.\xc3\xa9\xe2\x80\xa8\xff\x7f\x1f\x08\x0e;<"sv,
        "aaaaaaaaaaaaaaaaaa\" \n,:[]"sv, "[]{},:\""sv};
    std::mt19937 random(64);
    for (unsigned seed = 0; seed < 3000; ++seed) {
        const std::string_view alphabet = ALPHABETS[seed % ALPHABETS.size()];
        std::string text(64 + random() % 1000, ' ');
        std::generate(text.begin(), text.end(),
                      [&] { return alphabet[random() % alphabet.size()]; });
        const std::vector<quint32> expected = marksOf(json::markers().front(), text, seed);
        for (const json::Marker marker : json::markers())
            ASSERT_EQ(marksOf(marker, text, seed), expected) << seed;
    }
}

} // namespace
