#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QStringDecoder>

namespace report {

/// Hands on the bytes of another device, and notes how their text begins and ends. Keeps no more
/// than a beginning of it, and reads no further than it is asked to, so it serves pipes as well.
class LogDevice : public QIODevice {
public:
    /// `source` is open, not owned, and outlives the device.
    explicit LogDevice(QIODevice& source);

    bool isSequential() const override { return true; }

    /// The first bytes.
    const QByteArray& beginning() const { return mBeginning; }

    /// The text's first characters but for blanks, in UTF-8: at least three bytes, if it has them.
    QByteArrayView first() const;

    /// The last byte of the text in UTF-8 that is no blank, NUL without one.
    char last() const { return mLast; }

    /// A NUL ended the text: its readers see nothing of what follows.
    bool hasNul() const { return mHasNul; }

    /// The text was read to its end.
    bool isAtEnd() const { return mIsAtEnd; }

protected:
    qint64 readData(char* data, qint64 size) override;

    qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

private:
    void note(QByteArrayView bytes);
    void noteText(QByteArrayView utf8);

    QIODevice& mSource;
    QStringDecoder mDecoder; ///< Not valid for UTF-8.
    QByteArray mBeginning;
    QByteArray mFirst; ///< Perhaps with a byte order mark.
    char mLast = '\0';
    bool mHasNul = false;
    bool mIsAtEnd = false;
};

} // namespace report
