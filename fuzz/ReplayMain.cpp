// Driver for compilers without libFuzzer: runs the fuzz entry point over the files named on
// the command line (a folder stands for every file in it, the way CI replays a corpus), or with
// "--mutate N" over N random mutations of a few seed documents (byte flips, truncations,
// duplications, deep nesting). Deterministic for a given N.

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

void runFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    run(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--mutate") == 0) {
        const std::vector<std::string> seeds = {
            R"({"id":"t","tenant_id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","data":{"n":[1,2.5,null,true]},)"
            R"("metadata":{"a":"b"},"items":[{"key":"k","size":3}],"amount":1e3,"flag":false,"small":255,"x":{}})",
            R"([1,-1,1.0,18446744073709551615,"\u00e9\ud83d\ude00",{"a":[[]]}])",
            std::string(600, '[') + std::string(600, ']'),
        };
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
    long count = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (!std::filesystem::is_directory(path)) {
            runFile(path);
            ++count;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            if (!entry.is_regular_file()) continue;
            runFile(entry.path());
            ++count;
        }
    }
    std::printf("%ld inputs ran\n", count);
    return count > 0 ? 0 : 1;
}
