// Runs a fuzz target over every file of the folder given, in place of the fuzzer. Fails on an empty folder.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) return 2;
    std::error_code error;
    std::vector<std::filesystem::path> seeds;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1], error)) {
        if (entry.is_regular_file()) seeds.push_back(entry.path());
    }
    std::sort(seeds.begin(), seeds.end());

    for (const std::filesystem::path& seed : seeds) {
        std::printf("%s\n", seed.filename().string().c_str());
        std::fflush(stdout);  // so that the last name printed is the seed that crashed
        std::ifstream file(seed, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu seeds replayed\n", seeds.size());
    return seeds.empty() ? 1 : 0;
}
