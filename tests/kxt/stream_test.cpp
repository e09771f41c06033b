// Memory streams: reading in blocks, and the reads past the end that a reader of whole blocks makes;
// heap streams: growing buffers.
#include "tavi/kxt/stream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Kxt::KTheapStream;
using Kxt::KTmemoryStream;
using Kxt::KTstream;

TEST(MemoryStream, ReadsInBlocksUntilTheEnd)
{
    std::string const text = "hello world";  // 11 bytes: blocks of 4, 4, 3, then nothing
    KTmemoryStream stream(text.data(), text.size());
    std::vector<std::size_t> const counts = {4, 4, 3, 0, 0};
    std::string read;
    for (std::size_t expected : counts) {
        char block[4];
        std::size_t count = 99;
        EXPECT_EQ(stream.read(block, sizeof block, count), KTstream::Ok);
        EXPECT_EQ(count, expected);
        read.append(block, count);
    }
    EXPECT_EQ(read, text);

    std::size_t count = 99;
    EXPECT_EQ(stream.write("x", 1, count), KTstream::ReadOnly);
    EXPECT_EQ(count, 0u);
}

TEST(HeapStream, GrowsAcrossManyBlocks)
{
    struct Case {
        std::size_t block, growth, chunk, total;
        std::size_t capacity;  // the smallest block + k * growth, or doubling, that holds total
    };
    std::vector<Case> const cases = {
        {3, 7, 5, 50, 52},            // 3 + 7 * 7
        {0, 0, 1, 100, 128},          // 1, 2, 4, ..., 128
        {16, 8, 640, 640, 640},       // one write of many steps: 16 + 78 * 8
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(testing::Message() << "block " << c.block << ", growth " << c.growth);
        KTheapStream stream(c.block, c.growth);
        EXPECT_EQ(stream.capacity(), c.block);
        std::vector<unsigned char> bytes(c.total);
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<unsigned char>(i % 251 + 1);
        for (std::size_t at = 0; at < c.total; at += c.chunk) {
            std::size_t const size = std::min(c.chunk, c.total - at);
            std::size_t count = 0;
            ASSERT_EQ(stream.write(&bytes[at], size, count), KTstream::Ok);
            ASSERT_EQ(count, size);
        }
        EXPECT_EQ(stream.capacity(), c.capacity);
        ASSERT_EQ(stream.length(), c.total);
        EXPECT_EQ(std::memcmp(stream.data(), bytes.data(), c.total), 0);
        // two zero bytes always follow the data
        EXPECT_EQ(stream.data()[c.total], 0);
        EXPECT_EQ(stream.data()[c.total + 1], 0);

        // Read back the way the setup file is read: blocks of 512, the short one last.
        stream.rewind();
        std::vector<unsigned char> read;
        for (;;) {
            unsigned char block[512];
            std::size_t count = 0;
            ASSERT_EQ(stream.read(block, sizeof block, count), KTstream::Ok);
            read.insert(read.end(), block, block + count);
            if (count < sizeof block)
                break;
        }
        EXPECT_EQ(read, bytes);
    }
}

}  // namespace
