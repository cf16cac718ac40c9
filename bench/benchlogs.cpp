#include "bench/benchlogs.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <stdexcept>
#include <vector>

namespace bench {

namespace {

constexpr qint64 MEGABYTE = 1'000'000;
constexpr int PANELS = 12;

bool isMenu(int key) {
    return key % 16 == 15;
}

/// Some texts are not plain ASCII, as in logs of real programs.
std::string textOf(int key) {
    const std::string number = std::to_string(key);
    if (isMenu(key))
        return "window:menubar:command " + number;
    const std::string panel = "window:panel " + std::to_string(key % PANELS);
    return panel + (key % 25 == 24 ? ":größe " : ":button ") + number;
}

/// Writes one log; the same kind gives the same bytes.
class Writer {
public:
    explicit Writer(LogFile& file)
        : mFile(file)
        , mOut(file.path, std::ios::binary) {
        for (int key = 0; key < KEYS; ++key)
            mTexts.push_back(textOf(key));
    }

    void write() {
        mText = "[\n";
        unsigned seed = 1;
        while (!isLongEnough()) {
            addRecording(seed++);
            flush();
        }
        mText += "\n]\n";
        flush();
        mFile.tally.branches = static_cast<int>(std::count(mSeen.begin(), mSeen.end(), true));
        if (!mOut.flush())
            throw std::runtime_error("cannot write " + mFile.path);
    }

private:
    bool isLongEnough() const {
        const LogKind& kind = mFile.kind;
        return kind.recordings > 0
                   ? mFile.tally.recordings >= kind.recordings
                   : mFile.bytes + static_cast<qint64>(mText.size()) >= kind.megabytes * MEGABYTE;
    }

    void addRecording(unsigned seed) {
        mText += mFile.tally.recordings++ > 0 ? ",\n{" : "{";
        mTime = 0;
        mFirst = true;
        for (const int key : trace(mFile.kind.shape, mFile.kind.recordingSize, seed)) {
            addPress(key);
            mSeen[static_cast<std::size_t>(key)] = true;
        }
        mText += "\n}";
    }

    void addPress(int key) {
        mTime += 300 + static_cast<int>(mRng() % 3000);
        const int x = key * 37 % 1200 + static_cast<int>(mRng() % 9);
        const int y = key * 53 % 800 + static_cast<int>(mRng() % 9);
        const std::string place =
            std::to_string(x) + ", " + std::to_string(y) + (mRng() % 4 == 0 ? ".5" : "");
        addEvent(isMenu(key) ? "menu" : "down", key, place);
        if (!isMenu(key))
            addEvent("up", key, place);
    }

    void addEvent(const char* name, int key, const std::string& place) {
        mText += mFirst ? "\n  \"" : ",\n  \"";
        mFirst = false;
        mText += name;
        mText += "\": [" + std::to_string(mTime) + ", \"";
        mText += mTexts[static_cast<std::size_t>(key)] + "\", " + place + "]";
        ++mFile.tally.events;
    }

    void flush() {
        mOut << mText;
        mFile.bytes += static_cast<qint64>(mText.size());
        mText.clear();
    }

    LogFile& mFile;
    std::ofstream mOut;
    std::mt19937 mRng{1};
    std::vector<std::string> mTexts;
    std::vector<bool> mSeen = std::vector<bool>(KEYS);
    std::string mText;
    int mTime = 0;
    bool mFirst = true;
};

} // namespace

std::string nameOf(const LogKind& kind) {
    return std::string(nameOf(kind.shape)) + ", " + std::to_string(kind.recordingSize) +
           " a recording, " +
           (kind.recordings > 0 ? std::to_string(kind.recordings) + " of them"
                                : std::to_string(kind.megabytes) + " MB");
}

LogFile writeLog(const LogKind& kind, const std::string& path) {
    LogFile file{kind, path, 0, {}};
    Writer(file).write();
    return file;
}

const LogFile& Logs::log(const LogKind& kind) {
    const auto known = std::find_if(mFiles.begin(), mFiles.end(),
                                    [&](const LogFile& file) { return file.kind == kind; });
    if (known != mFiles.end())
        return *known;
    const QString path = mFolder.filePath(QString::number(mFiles.size()));
    return mFiles.emplace_back(writeLog(kind, path.toStdString()));
}

} // namespace bench
