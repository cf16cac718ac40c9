#include "bench/benchplaywright.h"

#include <minizip/zip.h>

#include <algorithm>
#include <random>
#include <stdexcept>

namespace bench {

namespace {

constexpr int MEGABYTE = 1'000'000;
constexpr int PRESSES = 200; // between two pictures

/// The only member of a zip file.
class Member {
public:
    explicit Member(const std::string& path)
        : mZip(zipOpen64(path.c_str(), APPEND_STATUS_CREATE)) {
        zipOpenNewFileInZip64(mZip, "trace.trace", nullptr, nullptr, 0, nullptr, 0, nullptr,
                              Z_DEFLATED, 1, 0);
    }

    void add(PlaywrightFile& file, const std::string& line) {
        mIsWritten =
            zipWriteInFileInZip(mZip, line.data(), static_cast<unsigned>(line.size())) == ZIP_OK &&
            mIsWritten;
        mBytes += static_cast<qint64>(line.size());
        file.largestEvent = std::max(file.largestEvent, static_cast<qint64>(line.size()));
    }

    qint64 bytes() const { return mBytes; }

    bool finish() {
        const bool isClosed = zipCloseFileInZip(mZip) == ZIP_OK;
        return zipClose(mZip, nullptr) == ZIP_OK && isClosed && mIsWritten;
    }

private:
    zipFile mZip;
    qint64 mBytes = 0;
    bool mIsWritten = true;
};

std::string picture(std::mt19937& random) {
    std::string line = R"({"type":"frame-snapshot","snapshot":{"html":["HTML",{})";
    while (line.size() < MEGABYTE)
        line += R"(,["TD",{"class":"cell"},"Order of )" + std::to_string(random()) + R"("])";
    return line + "]}}\n";
}

std::string press(int number, unsigned element) {
    const std::string call = R"("callId":"call@)" + std::to_string(number) + '"';
    return R"({"type":"before",)" + call + R"(,"startTime":)" + std::to_string(100 * number) +
           R"(,"class":"Frame","method":"click","params":{"selector":"internal:testid=[data-testid=\"open-)" +
           std::to_string(element) + R"(\"s]"}})" + "\n" + R"({"type":"input",)" + call +
           R"(,"point":{"x":12,"y":30}})" + "\n" + R"({"type":"after",)" + call + "}\n";
}

} // namespace

PlaywrightFile writePlaywright(int megabytes, const std::string& path) {
    PlaywrightFile file{path};
    Member member(path);
    std::mt19937 random{1};
    member.add(file, R"({"version":8,"type":"context-options","origin":"library"})"
                     "\n");
    while (member.bytes() < qint64(megabytes) * MEGABYTE) {
        member.add(file, picture(random));
        for (int i = 0; i < PRESSES; ++i)
            member.add(file, press(file.presses++, static_cast<unsigned>(random() % 40)));
    }
    if (!member.finish())
        throw std::runtime_error("cannot write " + path);
    return file;
}

} // namespace bench
