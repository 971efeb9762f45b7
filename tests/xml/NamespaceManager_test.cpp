#include "zro/xml/internal/NamespaceManager.h"

#include <map>
#include <random>
#include <vector>

#include "tests/support/Test.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::internal {
namespace {

using testing::utf8;

ZRName name(const char16_t* text) {
    return {UnicodeString(text)};
}

class NamespaceScopes : public ::testing::Test {
protected:
    void declare(const char16_t* prefix, const char16_t* uri) {
        m_manager->declare(name(prefix), name(uri));
    }
    std::string meaningOf(const char16_t* prefix) { return utf8(m_manager->lookup(name(prefix))); }

    ZRPtr<NamespaceManager> m_manager{new NamespaceManager};
};

// On purpose: the declaration is told to callers, yet the prefix keeps its meaning.
TEST_F(NamespaceScopes, AnEmptyUriUndeclaresTheDefaultNamespaceAlone) {
    m_manager->pushScope();
    declare(u"p", u"u");
    declare(u"", u"default");
    m_manager->pushScope();
    declare(u"p", u"");
    declare(u"", u"");
    EXPECT_EQ(m_manager->declarations().size(), 2U);
    EXPECT_EQ(meaningOf(u"p"), "u");
    EXPECT_EQ(meaningOf(u""), "");
}

// The second document is so large that its memory is given back.
TEST_F(NamespaceScopes, ResetKeepsWhatTheBaseScopeDeclares) {
    declare(u"", u"svg");
    for (const int scopes : {1, 3000}) {
        for (int i = 0; i < scopes; ++i) {
            m_manager->pushScope();
            m_manager->declare(ZRName::generateID(u"prefix"), name(u"u"));
        }
        m_manager->reset();
        m_manager->popScope();  // the base scope never ends
        EXPECT_EQ(m_manager->depth(), 0);
        EXPECT_EQ(meaningOf(u""), "svg");
        EXPECT_EQ(m_manager->findPrefix(name(u"u")), ZRN_EMPTY);
        EXPECT_EQ(m_manager->findPrefix(ZRN_ns_xml), ZRN_xml);
        EXPECT_EQ(m_manager->lookup(ZRN_xmlns), ZRN_ns_xmlns);
        EXPECT_EQ(m_manager->declarationCount(0), 3);
        EXPECT_EQ(m_manager->declarationCount(1) + m_manager->declarationCount(-1), 0);
    }
}

TEST_F(NamespaceScopes, HoldAReferenceOnTheSharedNameTable) {
    const int before = ZRNameTable::getSharedNameTable()->getRefCount();
    m_manager = nullptr;
    EXPECT_EQ(ZRNameTable::getSharedNameTable()->getRefCount(), before - 1);
}

// Each level asks for a prefix that nothing binds, which a walk would seek through all scopes.
TEST_F(NamespaceScopes, DepthCostsNothing) {
    constexpr int kDepth = 200000;
    for (const bool declares : {false, true}) {
        const ZRName uris[] = {name(u"even"), name(u"odd")};
        for (int i = 0; i < kDepth; ++i) {
            m_manager->pushScope();
            if (declares) {
                m_manager->declare(ZRN_EMPTY, uris[i % 2]);
            }
            m_manager->setElement(ZRN_EMPTY, m_manager->lookup(ZRN_EMPTY), ZRN_block);
            ASSERT_EQ(m_manager->lookup(ZRN_fo), ZRN_EMPTY);
        }
        EXPECT_EQ(m_manager->depth(), kDepth);
        m_manager->reset();
    }
}

// The rule as it is told: a walk from the innermost scope outwards.
class Walk {
public:
    void push() { m_scopes.emplace_back(); }
    void pop() { m_scopes.pop_back(); }
    std::size_t size() const { return m_scopes.size(); }

    struct Scope {
        bool hasElement = false;
        int prefix = 0;
        int uri = 0;
        std::map<int, int> declarations;
    };

    Scope& innermost() { return m_scopes.back(); }
    void setElement(int prefix, int uri) {
        m_scopes.back() = {true, prefix, uri, m_scopes.back().declarations};
    }

    bool declare(int prefix, int uri) {
        const bool isNews = lookup(prefix) != uri;
        if (isNews) {
            m_scopes.back().declarations[prefix] = uri;
        }
        return isNews;
    }

    int lookup(int prefix) const {
        for (std::size_t i = m_scopes.size(); i > 0; --i) {
            const Scope& scope = m_scopes[i - 1];
            if (scope.prefix == prefix && scope.uri != 0) {
                return scope.uri;
            }
            const auto found = scope.declarations.find(prefix);
            if (found != scope.declarations.end() && (found->second != 0 || prefix == 0)) {
                return found->second;
            }
        }
        return 0;
    }

    int findPrefix(int uri) const {
        for (std::size_t i = m_scopes.size(); i > 0; --i) {
            for (const auto& [prefix, value] : m_scopes[i - 1].declarations) {
                if (uri != 0 && value == uri && lookup(prefix) == uri) {
                    return prefix;
                }
            }
        }
        return 0;
    }

private:
    std::vector<Scope> m_scopes{1};
};

// Names are plain numbers here: 0 to 3 as prefixes, 0 and 11 to 13 as URIs.
ZRNameEnum number(int value) {
    return static_cast<ZRNameEnum>(value);
}

void expectAgreement(const NamespaceManager& manager, Walk& walk) {
    for (int prefix = 0; prefix < 4; ++prefix) {
        ASSERT_EQ(manager.lookup(number(prefix)), number(walk.lookup(prefix))) << prefix;
    }
    for (const int uri : {0, 11, 12, 13}) {
        ASSERT_EQ(manager.findPrefix(number(uri)), number(walk.findPrefix(uri))) << uri;
    }
    const NamespaceMap declared = manager.declarations();
    const auto& expected = walk.innermost().declarations;
    const int inherited = walk.size() == 1 ? 2 : 0;  // the base has two that the walk does not know
    ASSERT_EQ(declared.size(), expected.size() + static_cast<std::size_t>(inherited));
    ASSERT_EQ(manager.declarationCount(manager.depth()), static_cast<int>(declared.size()));
    int index = 0;  // in order of the numbers, and those of the base are higher
    for (const auto& [prefix, uri] : expected) {
        ASSERT_EQ(declared.prefix(index), number(prefix));
        ASSERT_EQ(declared.uri(index++), number(uri)) << prefix;
    }
}

TEST_F(NamespaceScopes, AgreeWithTheWalkOnRandomNestings) {
    std::mt19937 random(20240611);  // NOLINT(cert-msc51-cpp): the same on every run
    Walk walk;
    for (int step = 0; step < 20000; ++step) {
        const auto choice = random() % 8;
        const int prefix = static_cast<int>(random() % 4);
        const int uri = random() % 4 == 0 ? 0 : static_cast<int>(11 + random() % 3);
        if (choice < 2 && walk.size() < 12) {
            walk.push();
            m_manager->pushScope();
        } else if (choice == 2 && walk.size() > 1) {
            walk.pop();
            m_manager->popScope();
        } else if (choice == 3 && walk.size() > 1 && !walk.innermost().hasElement) {
            walk.setElement(prefix, uri);
            m_manager->setElement(number(prefix), number(uri), ZRN_block);
        } else {
            ASSERT_EQ(m_manager->declare(number(prefix), number(uri)), walk.declare(prefix, uri));
        }
        expectAgreement(*m_manager, walk);
        ASSERT_FALSE(HasFatalFailure()) << "at step " << step;
    }
}

}  // namespace
}  // namespace ZroCommon::internal
