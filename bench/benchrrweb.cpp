#include "bench/benchrrweb.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <stdexcept>
#include <vector>

namespace bench {

namespace {

constexpr int MILLION = 1'000'000;
constexpr int BETWEEN_SNAPSHOTS = 8 * MILLION; // bytes
constexpr int STYLES = 600'000;                // bytes of a snapshot
constexpr int ROWS = 1500;                     // of the table on the page
constexpr int CELLS = 5;
constexpr int ROWS_OF_MUTATION = 8;

/// Writes the events of one page, and knows which nodes there are.
class Page {
public:
    Page(RrwebFile& file, std::ofstream& stream)
        : mFile(file)
        , mStream(stream) {}

    void writeSnapshot() {
        mNextId = 1;
        mRows.clear();
        mText = R"({"type":2,"data":{"node":{"type":0,"childNodes":[{"type":2,"tagName":"html",)"
                R"("attributes":{"lang":"en"},"childNodes":[{"type":2,"tagName":"head",)"
                R"("attributes":{},"childNodes":[{"type":2,"tagName":"style","attributes":)"
                R"({"_cssText":")";
        while (mText.size() < STYLES)
            mText += R"(.button-primary:hover { color: rgb(20, 120, 212); content: \"\\201C\"; } )";
        mText += R"("},"childNodes":[],"id":)" + newId() + R"(}],"id":)" + newId() +
                 R"(},{"type":2,"tagName":"body","attributes":{"class":"app theme-light"},)"
                 R"("childNodes":[{"type":2,"tagName":"table","attributes":{"id":"orders"},)"
                 R"("childNodes":[)";
        for (int i = 0; i < ROWS; ++i)
            addRow(i > 0);
        mTable = newId();
        mText += R"(],"id":)" + mTable + R"(}],"id":)" + newId() + R"(}],"id":)" + newId() +
                 R"(}],"id":)" + newId() + R"(},"initialOffset":{"left":0,"top":0}})";
        finish();
    }

    /// Rows that come, as many that go, a text and an attribute that change.
    void writeMutation() {
        std::string gone;
        for (int i = 0; i < ROWS_OF_MUTATION; ++i)
            gone +=
                (i > 0 ? "," : "") + (R"({"parentId":)" + mTable) + R"(,"id":)" + takeRow() + '}';
        const std::string& other = mRows[below(mRows.size())].text;
        mText = R"({"type":3,"data":{"source":0,"texts":[{"id":)" + other +
                R"(,"value":"in work since \"today\""}],"attributes":[{"id":)" +
                mRows.back().button + R"(,"attributes":{"class":"button busy"}}],"removes":[)" +
                gone + R"(],"adds":[)";
        for (int i = 0; i < ROWS_OF_MUTATION; ++i) {
            mText +=
                (i > 0 ? "," : "") + (R"({"parentId":)" + mTable) + R"(,"nextId":null,"node":)";
            addRow(false);
            mText += '}';
        }
        mText += "]}";
        finish();
    }

    void writeMoves() {
        mText = R"({"type":3,"data":{"source":1,"positions":[)";
        for (int i = 0; i < 20; ++i)
            mText += (i > 0 ? "," : "") + (R"({"x":)" + number(1200)) + R"(,"y":)" + number(800) +
                     R"(,"id":)" + mTable + R"(,"timeOffset":-)" + number(500) + '}';
        mText += "]}";
        finish();
    }

    void writeScroll() {
        mText = R"({"type":3,"data":{"source":3,"id":)" + mTable + R"(,"x":0,"y":)" + number(5000) +
                '}';
        finish();
    }

    void writePress() {
        const std::string& button = mRows[below(mRows.size())].button;
        const std::string place =
            R"(,"id":)" + button + R"(,"x":)" + number(1200) + R"(,"y":)" + number(800) + '}';
        for (const char* const kind : {"1", "0", "2"}) {
            mText = std::string(R"({"type":3,"data":{"source":2,"type":)") + kind + place;
            finish();
        }
        ++mFile.presses;
    }

private:
    struct row {
        std::string id;
        std::string button;
        std::string text;
    };

    std::size_t below(std::size_t limit) { return mRandom() % limit; }

    std::string number(std::size_t limit) { return std::to_string(below(limit)); }

    std::string newId() { return std::to_string(mNextId++); }

    std::string takeRow() {
        const std::size_t place = below(mRows.size());
        const std::string id = mRows[place].id;
        mRows[place] = mRows.back();
        mRows.pop_back();
        return id;
    }

    void addRow(bool hasComma) {
        row made{newId(), newId(), {}};
        mText += (hasComma ? "," : "") +
                 (R"({"type":2,"tagName":"tr","attributes":{"class":"row","data-order":")" +
                  number(100'000)) +
                 R"("},"childNodes":[)";
        for (int i = 0; i < CELLS; ++i) {
            made.text = newId();
            mText += R"({"type":2,"tagName":"td","attributes":{"class":"cell numeric"},)"
                     R"("childNodes":[{"type":3,"textContent":"Order of )" +
                     number(10'000) + R"( pieces","id":)" + made.text + R"(}],"id":)" + newId() +
                     "},";
        }
        mText += R"({"type":2,"tagName":"button","attributes":{"class":"button","data-testid":")"
                 "open-" +
                 number(40) + R"("},"childNodes":[{"type":3,"textContent":"Open","id":)" + newId() +
                 R"(}],"id":)" + made.button + R"(}],"id":)" + made.id + '}';
        mRows.push_back(made);
    }

    void finish() {
        mText += R"(,"timestamp":)" + std::to_string(1'700'000'000'000 + 50 * mEvents++) + '}';
        mStream << (mEvents > 1 ? ",\n" : "") << mText;
        mFile.bytes += static_cast<qint64>(mText.size()) + 2;
        mFile.largestEvent = std::max(mFile.largestEvent, static_cast<qint64>(mText.size()));
    }

    RrwebFile& mFile;
    std::ofstream& mStream;
    std::mt19937 mRandom{1};
    std::string mText; // of the event
    std::string mTable;
    std::vector<row> mRows;
    qint64 mNextId = 1;
    qint64 mEvents = 0;
};

} // namespace

RrwebFile writeRrweb(int megabytes, const std::string& path) {
    RrwebFile file{path};
    std::ofstream stream(path, std::ios::binary);
    Page page(file, stream);
    stream << '[';
    while (file.bytes < qint64(megabytes) * MILLION) {
        page.writeSnapshot();
        const qint64 until = std::min(file.bytes + BETWEEN_SNAPSHOTS, qint64(megabytes) * MILLION);
        while (file.bytes < until) {
            page.writeMutation();
            page.writeMoves();
            page.writeScroll();
            page.writePress();
        }
    }
    stream << "]\n";
    if (!stream.flush())
        throw std::runtime_error("cannot write " + path);
    return file;
}

} // namespace bench
