#pragma once

#include "import/importoptions.h"

#include <QIODevice>
#include <QString>

#include <cstdint>
#include <memory>
#include <string>

namespace import {

/// The members of a zip file, one after the other, each unpacked as it is read. A member that
/// unpacks to more than it may reads as a fault from there on.
class Zip : public QIODevice {
public:
    /// Opens the file at `path`; `isArchive` tells whether it is a zip file.
    Zip(const QString& path, const unpacking& limits);
    ~Zip() override;

    bool isArchive() const { return mFile != nullptr; }

    /// Goes to the next member, the first one at first. False at the end, or when the directory of
    /// members is broken (`isBroken`). The device is then open for reading that member.
    bool nextMember();

    bool isBroken() const { return mIsBroken; }

    /// As the archive spells it.
    const std::string& memberName() const { return mName; }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 size) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    bool openMember();
    bool isWithinLimits() const;
    qint64 fail(const QString& why);

    struct closer {
        void operator()(void* file) const;
    };

    unpacking mLimits;
    std::unique_ptr<void, closer> mFile;
    std::string mName;
    std::int64_t mPacked = 0;
    std::int64_t mUnpacked = 0; // bytes of the member read so far
    bool mIsFirst = true;
    bool mIsBroken = false;
};

} // namespace import
