#include "zro/dom/internal/NodeSlab.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

#include "tests/dom/Trees.h"
#include "tests/support/Threads.h"

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

/// Nothing is kept at the end of a test.
class NodeSlabMemory : public ::testing::Test {
protected:
    ~NodeSlabMemory() override {
        NodeSlab::trim();
        EXPECT_LE(NodeSlab::reservedBytes(), m_before);
    }

    std::size_t reserved() const { return NodeSlab::reservedBytes() - m_before; }

private:
    std::size_t m_before = (NodeSlab::trim(), NodeSlab::reservedBytes());
};

TEST_F(NodeSlabMemory, OfOneSizeServesAnother) {
    for (const std::size_t size : {48U, 104U, 256U}) {
        std::vector<void*> blocks((std::size_t{4} << 20U) / size);
        std::generate(blocks.begin(), blocks.end(), [&] { return NodeSlab::allocate(size); });
        for (void* block : blocks) {
            NodeSlab::free(block, size);
        }
    }
    EXPECT_LE(reserved(), 6U * 1024U * 1024U);
}

// While it lives, they serve it again.
TEST_F(NodeSlabMemory, MayBeFreedByAnotherThreadAlsoAfterTheirsHasEnded) {
    for (int round = 0; round < 20; ++round) {
        std::vector<Block> blocks;
        const auto fill = [&] {
            for (int i = 0; i < 5000; ++i) {
                blocks.push_back(newBlock(104, static_cast<unsigned char>(i)));
            }
        };
        fill();
        std::thread(fill).join();
        std::thread([&] {
            for (const Block& block : blocks) {
                EXPECT_TRUE(isUntouched(block));
                NodeSlab::free(block.memory, block.size);
            }
        }).join();
    }
    EXPECT_LE(reserved(), 8U * 1024U * 1024U);
}

TEST_F(NodeSlabMemory, MayComeBackFromSeveralThreadsWhileTheirsCollectsIt) {
    std::vector<void*> blocks(240000);
    std::atomic<std::size_t> made{0};
    inThreads(3, [&](int thread) {
        if (thread == 0) {
            for (void*& block : blocks) {
                block = NodeSlab::allocate(64);
                ++made;
            }
            return;
        }
        for (auto i = static_cast<std::size_t>(thread - 1); i < blocks.size(); i += 2) {
            while (made <= i) {
                std::this_thread::yield();
            }
            NodeSlab::free(blocks[i], 64);
        }
    });
}

TEST(ZRNode, MayBeReleasedInAnyThread) {
    const Document document = loaded("<e x='more than eight units'>t</e>");
    std::vector<ZRPtr<ZRNode>> nodes(4000);
    std::generate(nodes.begin(), nodes.end(),
                  [&] { return document->getDocumentElement()->cloneNode(true); });
    std::vector<std::vector<ZRPtr<ZRNode>>> shares(4, nodes);
    nodes.clear();
    inThreads(4, [&](int i) { shares[static_cast<std::size_t>(i)].clear(); });
}

TEST(ZRElement, ManyThreadsMayBeTheFirstToAskForTheAttributes) {
    const Document document = newDocument();
    std::vector<ZRPtr<ZRElement>> elements(1000);
    std::generate(elements.begin(), elements.end(), [&] { return element(document, u"e"); });
    std::vector<ZRNamedNodeMap*> maps[2];
    inThreads(2, [&](int i) {
        for (const auto& each : elements) {
            maps[i].push_back(each->getAttributes());
        }
    });
    EXPECT_EQ(maps[0], maps[1]);
}

}  // namespace
}  // namespace ZroCommon::testing
