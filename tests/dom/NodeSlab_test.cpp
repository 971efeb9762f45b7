#include "zro/dom/internal/NodeSlab.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

using internal::NodeSlab;

struct Block {
    unsigned char* memory;
    std::size_t size;
    unsigned char mark;
};

Block newBlock(std::size_t size, unsigned char mark) {
    Block block{static_cast<unsigned char*>(NodeSlab::allocate(size)), size, mark};
    std::memset(block.memory, mark, size);
    return block;
}

bool isUntouched(const Block& block) {
    return std::all_of(block.memory, block.memory + block.size,
                       [&](unsigned char byte) { return byte == block.mark; });
}

TEST(NodeSlab, BlocksDoNotOverlapAndAreAligned) {
    std::mt19937 random(3);
    std::vector<Block> blocks;
    for (int step = 0; step < 20000; ++step) {
        if (blocks.size() < 4000 && random() % 5 < 3) {
            const std::size_t size = 1 + random() % 600;
            blocks.push_back(newBlock(size, static_cast<unsigned char>(step)));
            const auto address = reinterpret_cast<std::uintptr_t>(blocks.back().memory);
            EXPECT_EQ(address % (size % 16 == 0 ? 16 : 8), 0U) << size;
        } else if (!blocks.empty()) {
            std::swap(blocks[random() % blocks.size()], blocks.back());
            EXPECT_TRUE(isUntouched(blocks.back()));
            NodeSlab::free(blocks.back().memory, blocks.back().size);
            blocks.pop_back();
        }
    }
    for (const Block& block : blocks) {
        EXPECT_TRUE(isUntouched(block));
        NodeSlab::free(block.memory, block.size);
    }
    NodeSlab::free(nullptr, 8);
}

TEST(NodeSlab, MemoryOfOneSizeServesAnother) {
    NodeSlab::trim();
    const std::size_t before = NodeSlab::reservedBytes();
    for (const std::size_t size : {48U, 104U, 256U}) {
        std::vector<void*> blocks(4U * 1024U * 1024U / size);
        std::generate(blocks.begin(), blocks.end(), [&] { return NodeSlab::allocate(size); });
        for (void* block : blocks) {
            NodeSlab::free(block, size);
        }
    }
    EXPECT_LE(NodeSlab::reservedBytes() - before, 6U * 1024U * 1024U);
    NodeSlab::trim();
    EXPECT_LE(NodeSlab::reservedBytes(), before);
}

TEST(NodeSlab, BlocksMayBeFreedByAnotherThreadAlsoAfterTheirsHasEnded) {
    NodeSlab::trim();
    const std::size_t before = NodeSlab::reservedBytes();
    for (int round = 0; round < 3; ++round) {
        std::vector<Block> blocks;
        std::thread([&] {
            for (int i = 0; i < 20000; ++i) {
                blocks.push_back(newBlock(104, static_cast<unsigned char>(i)));
            }
        }).join();
        std::thread([&] {
            for (const Block& block : blocks) {
                EXPECT_TRUE(isUntouched(block));
                NodeSlab::free(block.memory, block.size);
            }
        }).join();
    }
    NodeSlab::trim();
    EXPECT_LE(NodeSlab::reservedBytes(), before);
}

TEST(NodeSlab, AThreadGetsBackWhatOthersFreed) {
    const auto handOver = [](std::vector<Block>& blocks) {
        std::thread([&] {
            for (const Block& block : blocks) {
                NodeSlab::free(block.memory, block.size);
            }
        }).join();
        blocks.clear();
    };
    std::vector<Block> blocks;
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < 5000; ++i) {
            blocks.push_back(newBlock(104, static_cast<unsigned char>(i)));
        }
        handOver(blocks);
    }
    EXPECT_LE(NodeSlab::reservedBytes(), 8U * 1024U * 1024U);
    NodeSlab::trim();
}

TEST(ZRNode, MayBeReleasedInAnyThread) {
    const Document document = newDocument();
    std::vector<ZRPtr<ZRNode>> nodes;
    for (int i = 0; i < 4000; ++i) {
        const ZRPtr<ZRElement> node = element(document, u"e");
        node->setAttribute(u"x"_name, ZRValue(UnicodeString(u"more than eight units")));
        node->appendChild(document->createTextNode(u"t"));
        nodes.emplace_back(node);
    }
    std::vector<std::vector<ZRPtr<ZRNode>>> shares(4, nodes);
    nodes.clear();
    std::vector<std::thread> threads;
    for (auto& share : shares) {
        threads.emplace_back([&share] { share.clear(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const auto& share : shares) {
        EXPECT_TRUE(share.empty());
    }
}

TEST(ZRDocument, ManyThreadsBuildAndDropTreesOfTheirOwn) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < 50; ++round) {
                const Document document = newDocument();
                document->loadXml(u"<a x='a longer value'><b>some text</b><c/>more text</a>");
                EXPECT_EQ(document->getDocumentElement()->getChildNodeCount(), 3);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
}  // namespace ZroCommon::testing
