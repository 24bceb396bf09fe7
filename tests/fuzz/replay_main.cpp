// Runs a fuzz target over the files and folders named on its command line,
// so that the corpus replays under any compiler, without libFuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dati, std::size_t n);

namespace fs = std::filesystem;

int main(int argc, char** argv)
{
    std::vector<fs::path> file;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) file.emplace_back(argv[i]);
        else
            for (const auto& e : fs::recursive_directory_iterator(argv[i]))
                if (e.is_regular_file()) file.push_back(e.path());
    }
    for (const fs::path& f : file) {
        std::ifstream in(f, std::ios::binary);
        const std::vector<char> byte((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(byte.data()), byte.size());
    }
    std::printf("%d inputs replayed\n", static_cast<int>(file.size()));
    return file.empty() ? 1 : 0;
}
