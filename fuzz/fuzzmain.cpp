// The main function of a fuzzer without libFuzzer: tries a corpus, then inputs mutated from it.
//
//     fuzz-parser [-runs=N] [-seed=S] [FILE OR FOLDER]...
//
// The flags are libFuzzer's. The same seed gives the same inputs. An input that makes the process
// abort is written into the file "finding".

#include "fuzz/fuzztarget.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_view_literals;

constexpr std::size_t LONGEST = 4096;
constexpr std::size_t MOST_CHANGES = 12;

constexpr std::array TOKENS{"{"sv,
                            "}"sv,
                            "["sv,
                            "]"sv,
                            ":"sv,
                            ","sv,
                            "\""sv,
                            "\\\""sv,
                            " "sv,
                            "\n"sv,
                            "\r\n"sv,
                            "\0"sv,
                            "\x1e"sv,
                            "[]"sv,
                            "{}"sv,
                            "\"\""sv,
                            "\"s\","sv,
                            "\"k\":"sv,
                            "true"sv,
                            "null"sv,
                            "-4.5"sv,
                            "1e300"sv,
                            "-1e-320"sv,
                            "nan"sv,
                            "inf"sv,
                            "12,"sv,
                            "0.1"sv,
                            "\"down\":["sv,
                            "\"up\":["sv,
                            "\"menu\":["sv,
                            "\"down\":[0,\"a\",1,2],"sv,
                            "\"down\":[0,\"b\"],"sv,
                            "\"menu\":[0,\"c\",3,4],"sv,
                            "\xef\xbb\xbf"sv,
                            "\xff\xfe"sv,
                            "\xfe\xff"sv,
                            "\xff\xfe\0\0"sv,
                            "\0\0\xfe\xff"sv,
                            "\xc2\xa0"sv,
                            "\xe2\x80\xa8"sv,
                            "\xf0\x9f\x98\x80"sv,
                            "\xed\xa0\x80"sv,
                            "\xc3"sv};

/// Makes inputs from those of a corpus by small random changes.
class Mutator {
public:
    /// `corpus` is not empty.
    Mutator(std::vector<std::string> corpus, unsigned seed)
        : mCorpus(std::move(corpus))
        , mRandom(seed) {}

    std::string next() {
        std::string input = pick(mCorpus);
        for (std::size_t left = 1 + below(MOST_CHANGES); left > 0; --left)
            change(input);
        input.resize(std::min(input.size(), LONGEST));
        return input;
    }

private:
    std::size_t below(std::size_t limit) { return mRandom() % limit; }

    template <typename Choices>
    const typename Choices::value_type& pick(const Choices& choices) {
        return choices[below(choices.size())];
    }

    void change(std::string& input) {
        const std::size_t at = below(input.size() + 1);
        switch (below(5)) {
        case 0:
            input.insert(at, pick(TOKENS));
            break;
        case 1:
            input.insert(at, 1, static_cast<char>(mRandom()));
            break;
        case 2:
            input.erase(at, below(16));
            break;
        case 3:
            if (at < input.size())
                input[at] = static_cast<char>(mRandom());
            break;
        default:
            const std::string& other = pick(mCorpus);
            input.insert(at, other, below(other.size() + 1), below(200));
        }
    }

    std::vector<std::string> mCorpus;
    std::mt19937 mRandom;
};

struct arguments {
    unsigned long runs = 0;
    unsigned seed = 1;
    std::vector<std::string> corpus;
};

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The contents of a file or of the files of a folder.
std::vector<std::string> readCorpus(const std::filesystem::path& path) {
    if (!std::filesystem::is_directory(path))
        return {contentsOf(path)};
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end()); // for the same inputs on every machine
    std::vector<std::string> corpus;
    std::transform(files.begin(), files.end(), std::back_inserter(corpus), contentsOf);
    return corpus;
}

arguments parse(int argc, char** argv) {
    arguments parsed;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.starts_with("-runs=")) {
            parsed.runs = std::stoul(argument.substr(6));
        } else if (argument.starts_with("-seed=")) {
            parsed.seed = static_cast<unsigned>(std::stoul(argument.substr(6)));
        } else {
            const std::vector<std::string> read = readCorpus(argument);
            parsed.corpus.insert(parsed.corpus.end(), read.begin(), read.end());
        }
    }
    if (parsed.corpus.empty())
        parsed.corpus.emplace_back();
    return parsed;
}

const std::string* TRIED = nullptr;

extern "C" void saveTried(int /*signal*/) {
    if (std::FILE* file = std::fopen("finding", "wb")) {
        std::fwrite(TRIED->data(), 1, TRIED->size(), file);
        std::fclose(file);
    }
}

void tryOut(const std::string& input) {
    TRIED = &input;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

} // namespace

int main(int argc, char** argv) {
    const arguments arguments = parse(argc, argv);
    std::signal(SIGABRT, saveTried);
    const auto start = std::chrono::steady_clock::now();
    for (const std::string& input : arguments.corpus)
        tryOut(input);
    Mutator mutator(arguments.corpus, arguments.seed);
    for (unsigned long run = 0; run < arguments.runs; ++run)
        tryOut(mutator.next());
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::printf("%lu executions in %.1f s\n", arguments.corpus.size() + arguments.runs,
                taken.count());
}
