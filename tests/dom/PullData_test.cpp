// Real documents: a tree that is pulled is the tree that is loaded whole.
#include <filesystem>
#include <iostream>
#include <random>
#include <vector>

#include "tests/dom/Trees.h"
#include "tests/support/Skips.h"

namespace ZroCommon::testing {
namespace {

std::vector<std::filesystem::path> documentsUnder(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, ignored)) {
        const auto extension = entry.path().extension();
        if (extension == ".fo" || extension == ".xml") {
            found.push_back(entry.path());
        }
    }
    return found;
}

/// The tree, and the error that ended it.
struct Outcome {
    std::string tree;
    std::string error;
    bool operator==(const Outcome&) const = default;
};

Outcome loadWhole(const UnicodeString& uri) {
    const Document document = newDocument();
    const std::string error = errorOf([&] { document->load(uri); });
    return {dump(document), error};
}

/// Reads by whatever accessor comes up, until there is nothing more.
Outcome pull(const UnicodeString& uri, unsigned seed) {
    std::mt19937 random(seed);
    const Document document = newDocument();
    document->setPullMode(true);
    const std::string error = errorOf([&] {
        document->load(uri);
        while (ZRNode* node = document->getLastLoadingNode()) {
            switch (random() % 4) {
            case 0: node->getFirstChild(); break;
            case 1: node->hasChildNodes(); break;
            case 2: node->getNextSibling(); break;
            default: document->loadNextNode();
            }
            if (random() % 64 == 0) {
                node->getLastChild();
            }
            if (document->getLastLoadingNode() == node) {
                document->loadNextNode();
            }
        }
    });
    return {dump(document), error};
}

void expectPullLikeWhole(const std::filesystem::path& path) {
    const UnicodeString uri = text(path.string());
    const Outcome whole = loadWhole(uri);
    const Outcome pulled = pull(uri, 5);
    EXPECT_EQ(pulled.error, whole.error) << path;
    EXPECT_TRUE(pulled.tree == whole.tree) << path;
}

TEST(PullMode, GivesTheTreeOfAWholeLoadOfTheExamples) {
    const auto documents = documentsUnder(ZRO_EXAMPLES_DIR);
    EXPECT_FALSE(documents.empty());
    for (const auto& path : documents) {
        expectPullLikeWhole(path);
    }
}

TEST(PullMode, GivesTheTreeOfAWholeLoadOfRealDocuments) {
    const auto documents = documentsUnder(std::string(ZRO_TEST_DATA_DIR) + "/fo");
    if (documents.empty()) {
        GTEST_SKIP() << noData(ZRO_TEST_DATA_DIR "/fo");
    }
    for (const auto& path : documents) {
        expectPullLikeWhole(path);
    }
    std::cout << documents.size() << " documents\n";
}

}  // namespace
}  // namespace ZroCommon::testing
