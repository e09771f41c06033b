// Replays the inputs that once brought a fuzzer down (tests/fuzz/inputs/<target>) through that fuzzer's
// own entry point, built without the fuzzing engine: a crash, an abort of its checks or a sanitizer
// finding fails the test.
#include <dirent.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

TEST(FuzzReplay, FoundInputsPass)
{
    std::string const folder = TAVI_SOURCE_DIR "/tests/fuzz/inputs/" TAVI_FUZZ_TARGET;
    std::vector<std::string> names;
    if (DIR *dir = opendir(folder.c_str())) {
        while (dirent *entry = readdir(dir))
            if (entry->d_name[0] != '.')
                names.push_back(entry->d_name);
        closedir(dir);
    }
    ASSERT_FALSE(names.empty()) << folder;
    std::sort(names.begin(), names.end());
    if (LLVMFuzzerInitialize != nullptr)
        LLVMFuzzerInitialize(nullptr, nullptr);
    for (std::string const &name : names) {
        SCOPED_TRACE(name);
        std::ifstream in(folder + "/" + name, std::ios::binary);
        std::ostringstream bytes;
        bytes << in.rdbuf();
        std::string const input = bytes.str();
        EXPECT_EQ(0, LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const *>(input.data()), input.size()));
    }
}
