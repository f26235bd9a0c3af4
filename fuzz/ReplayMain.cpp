// Driver for compilers without libFuzzer: runs the fuzz entry point over the files named on
// the command line (a folder stands for every file in it, the way CI replays a corpus), or with
// "--mutate N FOLDER" over N random mutations of the inputs in FOLDER (byte flips,
// truncations, duplications, deep nesting). Deterministic for a given N and corpus.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void run(const std::string& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// The files named, a folder standing for the files in it, in a fixed order.
std::vector<std::filesystem::path> inputFiles(char** first, char** last) {
    std::vector<std::filesystem::path> files;
    for (; first != last; ++first) {
        const std::filesystem::path path(*first);
        if (!std::filesystem::is_directory(path)) {
            files.push_back(path);
            continue;
        }
        std::vector<std::filesystem::path> inFolder;
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            if (entry.is_regular_file()) inFolder.push_back(entry.path());
        }
        std::sort(inFolder.begin(), inFolder.end());
        files.insert(files.end(), inFolder.begin(), inFolder.end());
    }
    return files;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc >= 4 && std::strcmp(argv[1], "--mutate") == 0) {
        std::vector<std::string> seeds;
        for (const auto& path : inputFiles(argv + 3, argv + argc)) seeds.push_back(readFile(path));
        if (seeds.empty()) return 1;
        std::mt19937 random(12345);
        long count = std::stol(argv[2]);
        for (long i = 0; i < count; ++i) {
            std::string input = seeds[random() % seeds.size()];
            int edits = 1 + static_cast<int>(random() % 8);
            for (int e = 0; e < edits && !input.empty(); ++e) {
                std::size_t at = random() % input.size();
                switch (random() % 4) {
                    case 0:
                        input[at] = static_cast<char>(random());
                        break;
                    case 1:
                        input.resize(at);
                        break;
                    case 2:
                        input.insert(at, input.substr(at, random() % 16));
                        break;
                    default:
                        input.insert(at, std::string(random() % 3, "[{\"0"[random() % 4]));
                        break;
                }
            }
            run(input);
        }
        std::printf("%ld mutated inputs ran\n", count);
        return 0;
    }
    const auto files = inputFiles(argv + 1, argv + argc);
    for (const auto& path : files) run(readFile(path));
    std::printf("%zu inputs ran\n", files.size());
    return files.empty() ? 1 : 0;
}
