/// Stands in for libFuzzer: runs a fuzz target once over nothing and once over every file that it finds in the folders
/// given as arguments, a folder that isn't there counting as empty. Prints how many there were.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

void Replay(const std::string &bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
}

std::size_t ReplayFolder(const std::filesystem::path &folder) {
    std::size_t files = 0;
    std::error_code failure;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder, failure)) {
        if (!entry.is_regular_file()) {
            continue;
        }
        // The name goes out first: when the target crashes, it is the last line.
        std::fprintf(stderr, "%s\n", entry.path().c_str());
        std::ifstream file(entry.path(), std::ios::binary);
        Replay(std::string(std::istreambuf_iterator<char>(file), {}));
        ++files;
    }
    return files;
}

}  // namespace

int main(int argument_count, char **arguments) {
    Replay({});
    std::size_t files = 0;
    for (int index = 1; index < argument_count; ++index) {
        files += ReplayFolder(arguments[index]);
    }
    std::printf("%zu files replayed\n", files);
    return 0;
}
