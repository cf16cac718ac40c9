#pragma once

#include <QString>
#include <QStringDecoder>

#include <memory>
#include <vector>

namespace json {

/// Decodes the strings of one text. A log has few names and keys, each very often: those of usual
/// length are found by their bytes once they were decoded, at the same place in memory while
/// others do not take it.
class Strings {
public:
    /// `isRecoded`: the text is in the form that a `Recoder` gives.
    explicit Strings(bool isRecoded);

    /// The text of the bytes, not none of them; holds until the next call. Throws `std::bad_alloc`.
    const QString& find(const char* begin, const char* end);

    /// Decodes the bytes, not none of them, into the storage of `text`. Throws `std::bad_alloc`.
    void decode(const char* begin, const char* end, QString& text);

private:
    static constexpr qsizetype LONGEST = 96; ///< A known string fills two cache lines.
    static constexpr int SLOT_BITS = 12;

    struct known {
        QString text;
        qsizetype size = 0;
        char bytes[LONGEST] = {};
    };

    static quint64 hashOf(const char* begin, qsizetype size);
    const QString& learn(const char* begin, const char* end, std::unique_ptr<known>& slot);

    std::vector<std::unique_ptr<known>> mSlots; ///< By hash; a newer string takes an older one's.
    QString mLong;
    QStringDecoder mDecoder;
    const bool mIsRecoded;
};

} // namespace json
