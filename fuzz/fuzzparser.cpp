// Holds the parser against its plain rules: the same bytes must lead to the same callbacks and the
// same result, whatever their encoding and however the device delivers them.
//
// The first bytes of an input choose the way, the others are the text.

#include "fuzz/fuzzdevice.h"
#include "fuzz/fuzzinput.h"
#include "fuzz/fuzztarget.h"
#include "fuzz/plain/plainparser.h"
#include "fuzz/plain/plaintext.h"
#include "json/jsonparser.h"
#include "tests/common/recorder.h"

#include <QBuffer>
#include <QStringEncoder>

#include <memory>
#include <numeric>
#include <string_view>

namespace {

constexpr int CHOICES = 4;

enum Form { AsItIs, Utf16, Utf16BigEndian, Utf32, Numbers, FORMS };

enum Delivery { FromMemory, RandomAccess, Sequential, WithLineEnds, DELIVERIES };

constexpr int PUSHES = 5;

QByteArray encoded(const QByteArray& utf8, QStringConverter::Encoding encoding) {
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder(QString::fromUtf8(utf8));
}

/// An array of what may or may not be numbers.
QByteArray numbers(const QByteArray& bytes) {
    static constexpr std::string_view CHARACTERS =
        "0123456789012345678901234567890,,,,..--+eExinfa";
    QByteArray text = "[";
    for (const char byte : bytes)
        text += CHARACTERS[static_cast<unsigned char>(byte) % CHARACTERS.size()];
    return text + ",]";
}

QByteArray inForm(const QByteArray& bytes, int form) {
    switch (form) {
    case Utf16:
        return encoded(bytes, QStringConverter::Utf16LE);
    case Utf16BigEndian:
        return encoded(bytes, QStringConverter::Utf16BE);
    case Utf32:
        return encoded(bytes, QStringConverter::Utf32);
    case Numbers:
        return numbers(bytes);
    default:
        return bytes;
    }
}

/// For one input in 64, none of which looks better to a fuzzer than others as long texts take long:
/// blanks that end up to 255 characters before the end of what readers commonly buffer.
QByteArray blanksBefore(const QByteArray& bytes, int piece) {
    const unsigned sum = std::accumulate(bytes.begin(), bytes.end(), 0U,
                                         [](unsigned s, char c) { return s + uchar(c); });
    constexpr int BUFFER = 16384;
    return sum % 64 == 63 ? QByteArray((BUFFER << sum / 64 % 4) - piece, ' ') : QByteArray();
}

std::unique_ptr<QIODevice> deviceFor(const QByteArray& bytes, int delivery, int piece) {
    if (delivery != FromMemory && delivery != WithLineEnds)
        return std::make_unique<fuzz::PiecewiseDevice>(bytes, piece, delivery == Sequential);
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    return buffer;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static json::Parser parser; // one for all texts: nothing may be left over
    fuzz::Input input(data, size);
    const int form = input.below(FORMS);
    const int delivery = input.below(DELIVERIES);
    const int piece = input.byte() + 1;
    const auto pushes = static_cast<Pushes>(input.below(PUSHES));
    const std::size_t used = std::min<std::size_t>(CHOICES, size);
    const QByteArray rest(reinterpret_cast<const char*>(data + used), qsizetype(size - used));
    const QByteArray bytes = inForm(blanksBefore(rest, piece) + rest, form);

    const int longer = bytes.size() < 10'000 ? 1 : 64; // a byte at a time would take long
    const auto open = [&] {
        std::unique_ptr<QIODevice> device = deviceFor(bytes, delivery, longer * piece);
        device->open(delivery == WithLineEnds ? QIODevice::ReadOnly | QIODevice::Text
                                              : QIODevice::OpenMode(QIODevice::ReadOnly));
        return device;
    };
    const std::string expected = record(pushes, [&](json::Reader* root) {
        const QString text = plain_text(bytes);
        return PlainParser(delivery == WithLineEnds ? QString(text).remove(u'\r') : text)
            .parse(root);
    });
    const std::string actual =
        record(pushes, [&](json::Reader* root) { return parser.parse(open().get(), root); });
    fuzz::requireSame(actual, expected);
    return 0;
}
