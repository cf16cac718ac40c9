#pragma once

#include <QByteArray>
#include <QIODevice>

#include <algorithm>
#include <cstring>

namespace fuzz {

/// A device that delivers its bytes in pieces.
class PiecewiseDevice : public QIODevice {
public:
    PiecewiseDevice(QByteArray bytes, qsizetype piece, bool sequential)
        : mBytes(std::move(bytes))
        , mPiece(piece)
        , mSequential(sequential) {}

    bool isSequential() const override { return mSequential; }

    qint64 size() const override { return mSequential ? QIODevice::size() : mBytes.size(); }

    bool seek(qint64 position) override {
        mAt = position;
        return QIODevice::seek(position);
    }

protected:
    qint64 readData(char* data, qint64 most) override {
        const qsizetype count = std::min({mPiece, most, mBytes.size() - mAt});
        if (count <= 0)
            return most == 0 ? 0 : -1;
        std::memcpy(data, mBytes.constData() + mAt, static_cast<std::size_t>(count));
        mAt += count;
        return count;
    }

    qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

private:
    const QByteArray mBytes;
    const qsizetype mPiece;
    const bool mSequential;
    qsizetype mAt = 0;
};

} // namespace fuzz
