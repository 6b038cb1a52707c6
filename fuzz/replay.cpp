// Runs a fuzz target on every file of the folders given, once each, in any build.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int main(int count, char **values)
{
    int files = 0;
    for (int argument = 1; argument < count; ++argument) {
        for (const auto &entry : std::filesystem::directory_iterator(values[argument])) {
            std::ifstream stream(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
            if (!stream) {
                std::fprintf(stderr, "%s cannot be read\n", entry.path().c_str());
                return 1;
            }
            std::printf("%s\n", entry.path().c_str()); // The last one printed is the one that breaks it.
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
            ++files;
        }
    }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
