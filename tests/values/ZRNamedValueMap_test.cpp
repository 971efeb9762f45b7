#include "zro/values/ZRNamedValueMap.h"

#include <memory>

#include "tests/support/Probe.h"
#include "tests/support/SmallStack.h"
#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

ZRPtr<ZRNamedValueMap> newMap() {
    return new ZRNamedValueMap;
}

std::string forwards(const ZRNamedValueMap* map) {
    std::string all;
    for (ZRNamedValueMapIterator items(map); items.hasNext();) {
        const ZRNamedValue& item = items.next();
        all += utf8(item.getName().toString()) + "=" + utf8(item.toString()) + " ";
    }
    return all;
}

TEST(ZRNamedValueMap, KeepsItsItemsInTheOrderOfNameNumbers) {
    const ZRPtr<ZRNamedValueMap> map = newMap();
    const ZRName own(u"first of its kind");
    for (const ZRName name : {own, ZRName(ZRN_azimuth), ZRName(ZRN_yav), ZRName(ZRN_hash_CMYK),
                              ZRName(ZRN_Zyyy), ZRName()}) {
        map->setNamedItem(name, ZRValue(1));
    }
    EXPECT_EQ(forwards(map), "=1 Zyyy=1 #CMYK=1 yav=1 azimuth=1 first of its kind=1 ");
    EXPECT_EQ(map->item(3).getName(), ZRN_yav);
    EXPECT_EQ(map->getCount(), 6);
}

TEST(ZRNamedValueMap, ReplacesAndRemovesByNameAndValue) {
    const ZRPtr<ZRNamedValueMap> map = newMap();
    EXPECT_EQ(dump(map->getNamedItem(ZRN_length)), "null");
    EXPECT_EQ(map->getNamedItem(ZRN_length).getName(), ZRN_length);
    map->setNamedItem(ZRN_length, ZRValue(1));
    map->setNamedItem(ZRNamedValue(ZRValue(1.0F, ZRValueUnitIn), ZRN_length));
    EXPECT_EQ(forwards(map), "length=1in ");
    for (const int index : {-1, 1, 2}) {
        EXPECT_TRUE(map->item(index).isNull()) << index;
        EXPECT_TRUE(map->item(index).getName().isEmpty()) << index;
    }
    map->removeNamedItem(ZRN_length, ZRValue(71.0F, ZRValueUnitPt));
    map->removeNamedItem(ZRN_maximum);
    EXPECT_EQ(map->getCount(), 1);
    map->removeNamedItem(ZRN_length, ZRValue(72.0F, ZRValueUnitPt));
    EXPECT_EQ(map->getCount(), 0);
    map->setNamedItem(ZRN_length, ZRValue());
    EXPECT_EQ(map->getCount(), 1);
    EXPECT_EQ(map->getTypeID(), 0xE7D947B0U);
    EXPECT_TRUE(map->isA(0x90AF0240U) && !map->isA(0x31FB5B85U));
}

TEST(ZRNamedValueMap, WalksInBothDirections) {
    const ZRPtr<ZRNamedValueMap> map = newMap();
    map->setNamedItem(ZRN_minimum, ZRValue(1));
    map->setNamedItem(ZRN_maximum, ZRValue(2));
    ZRNamedValueMapIterator items(map);
    EXPECT_FALSE(items.hasPrevious());
    EXPECT_TRUE(items.previous().isNull());
    const ZRNamedValue& first = items.next();
    EXPECT_EQ(items.next().getName(), ZRN_minimum);
    EXPECT_EQ(first.getName(), ZRN_maximum);
    EXPECT_TRUE(items.next().isNull());
    EXPECT_EQ(items.previous().getName(), ZRN_minimum);
    items.setToStart();
    EXPECT_EQ(&items.next(), &first);
    items.setToEnd();
    EXPECT_FALSE(items.hasNext());
    EXPECT_FALSE(ZRNamedValueMapIterator(nullptr).hasNext());
}

TEST(ZRNamedValueMap, ACloneSharesNestedMapsAndNothingElse) {
    const ZRPtr<ZRNamedValueMap> map = newMap();
    map->setNamedItem(ZRN_maximum, ZRValue(u"text"));
    map->setNamedItem(ZRN_length, mapOf(ZRN_EMPTY, 1));
    const ZRPtr<ZRNamedValueMap> copy = map->clone();
    EXPECT_EQ(copy->getRefCount(), 1);
    map->setNamedItem(ZRN_maximum, ZRValue(u"other"));
    map->getNamedItem(ZRN_length).getNamedValueMap()->setNamedItem(ZRN_EMPTY, ZRValue(2));
    EXPECT_EQ(forwards(copy), "length={.: 2} maximum=text ");
}

TEST(ZRNamedValue, KeepsItsNameWhenTheValueChanges) {
    ZRNamedValue item(ZRValue(u"text"), ZRN_length);
    item.setValue(ZRNamedValue(ZRValue(5), ZRN_maximum));
    EXPECT_EQ(item.getName(), ZRN_length);
    ZRValue plain;
    plain = item;
    EXPECT_EQ(plain, ZRValue(5));
    EXPECT_EQ(plain.getUnitType(), ZRValueUnitNumber) << "a plain copy does not show the name";
    EXPECT_EQ(ZRNamedValue(item.getValue(), ZRName()).getName(), ZRN_EMPTY);
    const ZRName high(static_cast<ZRNameEnum>(0x7FFFFFFF));
    item.setName(high);
    EXPECT_EQ(item.getName(), high);
    EXPECT_EQ(dump(item), "integer 5");
}

TEST(ZRValueCompound, TheOldValueBecomesTheDefaultItem) {
    ZRValue value(5);
    value.setUnitType(ZRValueUnitColor);
    EXPECT_EQ(value.getNamedItem(ZRN_EMPTY), value);
    EXPECT_TRUE(value.getNamedItem(ZRN_length).isNull());
    value.removeNamedItem(ZRN_EMPTY);
    for (int i = 0; i < 2; ++i) {
        value.makeCompound();
        EXPECT_EQ(dump(value), "map {.: #000005}");
        EXPECT_FALSE(value.isColor());
    }
    ZRValue nothing;
    nothing.makeCompound();
    EXPECT_EQ(dump(nothing), "map {}");
    ZRValue own(u"text");
    own.setNamedItem(ZRN_length, own);
    EXPECT_EQ(dump(own), "map {.: text; length: text}");
}

TEST(ZRNamedValueMap, DeepMapsEndWithoutRecursion) {
    onSmallStack([] {
        ZRValue value;
        for (int depth = 0; depth < 1'000'000; ++depth) {
            const ZRPtr<ZRNamedValueMap> map = newMap();
            map->setNamedItem(ZRN_length, value);
            // Held as a map, and as an object like any other.
            value =
                depth % 2 == 0 ? ZRValue(map.get()) : ZRValue(static_cast<ZRRCObject*>(map.get()));
        }
    });
}

// On purpose: an object that is made the default item keeps the reference of the value as well.
TEST(ZRValueCompound, AnObjectKeepsTheReferenceOfAValueThatBecameAMap) {
    const ZRPtr<Probe> probe(new Probe);
    {
        ZRValue value(probe.get());
        value.makeCompound();
        EXPECT_EQ(value.getNamedItem(ZRN_EMPTY).getRCObject(), probe.get());
        EXPECT_EQ(probe->getRefCount(), 3);
    }
    EXPECT_EQ(probe->getRefCount(), 2);
    probe->removeRef();
}

}  // namespace
}  // namespace ZroCommon::testing
