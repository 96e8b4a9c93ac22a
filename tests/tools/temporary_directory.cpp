#include "tests/tools/temporary_directory.h"

#include <fstream>
#include <iterator>

std::string ReadBytes(const std::string &name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void WriteBytes(const std::string &name, const std::string &bytes) { std::ofstream(name, std::ios::binary) << bytes; }
