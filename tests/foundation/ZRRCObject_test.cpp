#include "zro/foundation/ZRRCObject.h"

#include <type_traits>
#include <utility>

#include "tests/support/Probe.h"
#include "tests/support/Test.h"
#include "tests/support/Threads.h"
#include "zro/foundation/ZRPtr.h"

namespace ZroCommon::testing {
namespace {

class DerivedProbe : public Probe {};

TEST(ZRRCObject, DiesWithTheLastRelease) {
    const auto* probe = new Probe;
    EXPECT_EQ(probe->getRefCount(), 0);
    EXPECT_EQ(probe->addRef(), 1);
    EXPECT_EQ(probe->addRef(), 2);
    EXPECT_EQ(probe->release(), 1);
    EXPECT_EQ(Probe::living, 1);
    EXPECT_EQ(probe->release(), 0);
    EXPECT_EQ(Probe::living, 0);
    EXPECT_EQ((new Probe)->release(), -1);
    EXPECT_EQ(Probe::living, 0) << "also when nobody has ever owned it";
}

TEST(ZRRCObject, MayBeGivenUpWithoutDying) {
    const auto* probe = new Probe;
    probe->addRef();
    EXPECT_EQ(probe->removeRef(), 0);
    probe->addRef();
    EXPECT_EQ(probe->decrementRefCount(), 0);
    probe->addRef();
    probe->clearRefCount();
    EXPECT_EQ(probe->getRefCount(), 0);
    EXPECT_EQ(Probe::living, 1);
    probe->release();
}

TEST(ZRRCObject, CountsFromManyThreads) {
    const ZRPtr<Probe> probe(new Probe);
    inThreads(8, [&probe](int) {
        for (int round = 0; round < 2000; ++round) {
            ZRPtr<Probe> copy(probe);
            copy = nullptr;
        }
    });
    EXPECT_EQ(probe->getRefCount(), 1);
}

TEST(ZRRCObject, AnswersForItsOwnAndTheListedTypes) {
    const ZRPtr<DerivedProbe> probe(new DerivedProbe);
    EXPECT_TRUE(probe->isA(0x90AF0240U) && probe->isA(0xA4EBD8C4U));
    EXPECT_FALSE(probe->isA(7)) << "a class without an isA of its own inherits the list";
    EXPECT_FALSE(probe->isA(0));
    EXPECT_EQ(ZRObjectBase::getStaticTypeID(), 0xA4EBD8C4U);
    ZRRCObject::DebugPrintInstanceCount(nullptr);  // does nothing
    ZRRCObject::DebugPrintInstanceId(nullptr, 1);
}

TEST(ZRPtr, HoldsOneReference) {
    ZRPtr<Probe> first(new Probe);
    EXPECT_EQ(first->getRefCount(), 1);
    ZRPtr<Probe> second(first);
    EXPECT_EQ(first->getRefCount(), 2);
    const ZRPtr<Probe> third(std::move(second));
    EXPECT_EQ(first->getRefCount(), 2);
    first = nullptr;
    EXPECT_EQ(third->getRefCount(), 1);
    ZRPtr<Probe> none(first);
    none = first;
    EXPECT_EQ(none, nullptr);
    first = third;
    first = *&first;
    EXPECT_EQ(third->getRefCount(), 2);
    Probe* raw = first.detach();
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_EQ(raw->getRefCount(), 2);
    first = ZRPtr<Probe>::adopt(raw);
    EXPECT_EQ(raw->getRefCount(), 2);
}

TEST(ZRPtr, ConvertsToTheBasesOfItsClassOnly) {
    static_assert(std::is_convertible_v<ZRPtr<DerivedProbe>, ZRPtr<ZRRCObject>>);
    static_assert(!std::is_constructible_v<ZRPtr<DerivedProbe>, const ZRPtr<Probe>&>);
    ZRPtr<ZRRCObject> base;
    base = ZRPtr<DerivedProbe>(new DerivedProbe);
    EXPECT_EQ(base->getRefCount(), 1);
    base = base.get();
    EXPECT_EQ(Probe::living, 1);
}

}  // namespace
}  // namespace ZroCommon::testing
