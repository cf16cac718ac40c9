#include "bench/benchcsv.h"

#include <fstream>
#include <random>
#include <stdexcept>

namespace bench {

namespace {

constexpr int MEGABYTE = 1'000'000;

std::string number(unsigned value, int digits) {
    std::string text = std::to_string(value);
    return std::string(static_cast<std::size_t>(digits) - text.size(), '0') + text;
}

std::string timeOf(unsigned seconds) {
    return "2024-01-" + number(1 + seconds / 86400 % 31, 2) + "T" + number(seconds / 3600 % 24, 2) +
           ":" + number(seconds / 60 % 60, 2) + ":" + number(seconds % 60, 2);
}

class Rows {
public:
    std::string next(CsvFile& file) {
        const char* const gestures[] = {"mousedown", "mouseup", "mousemove"};
        ++mCount;
        const unsigned gesture = below(3);
        file.events += gesture < 2 ? 1 : 0;
        const unsigned element = below(400);
        std::string row = std::to_string(mCount) + "," + timeOf(2 * mCount) + ",user" +
                          std::to_string(below(40)) + ",Application " +
                          std::to_string(element % 12) + ",";
        row += below(16) == 0 ? "\"Order \"\"" + std::to_string(below(1000)) + "\"\", open\""
                              : "Orders of the day";
        row += ",Button " + std::to_string(element) + "," + gestures[gesture] + "," +
               std::to_string(below(1920)) + "," + std::to_string(below(1080)) + ".5,";
        return row + (below(4) == 0 ? "as before" : "") + "\n";
    }

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(mRandom() % limit); }

    std::mt19937 mRandom{1};
    unsigned mCount = 0;
};

} // namespace

CsvFile writeCsv(int megabytes, const std::string& path) {
    CsvFile file{path};
    std::ofstream stream(path, std::ios::binary);
    Rows rows;
    std::string row = "row,time,user,app,window,element,event,x,y,note\n";
    while (file.bytes < qint64(megabytes) * MEGABYTE) {
        stream << row;
        file.bytes += static_cast<qint64>(row.size());
        row = rows.next(file);
    }
    stream << row;
    if (!stream.flush())
        throw std::runtime_error("cannot write " + path);
    return file;
}

} // namespace bench
