#include "zro/vocabulary/ZRNameTable.h"

#include <atomic>

#include "zro/foundation/ZREmptyString.h"
#include "zro/foundation/ZRLock.h"
#include "zro/foundation/internal/TextView.h"
#include "zro/vocabulary/internal/BuiltinNames.h"
#include "zro/vocabulary/internal/NameHash.h"
#include "zro/vocabulary/internal/NameStore.h"
#include "zro/vocabulary/internal/SharedNames.h"

namespace ZroCommon {
namespace {

// Guards the pointer below and every addition to any table.
constinit ZRLock s_sharedNameTableLock;
constinit std::atomic<ZRNameTable*> s_sharedNameTable{nullptr};

// The texts of the shared table outlive it: other threads may hold references to them, and a table
// made anew takes them up again, so memory grows with the distinct names alone. Never destroyed at
// the end of the process, when static objects of a client may still print names.
constinit std::atomic<internal::NameStore*> s_sharedStore{nullptr};

internal::NameStore& sharedStoreMutexed() {
    internal::NameStore* store = s_sharedStore.load(std::memory_order_relaxed);
    if (store == nullptr) {
        store = new internal::NameStore;
        s_sharedStore.store(store, std::memory_order_release);
    }
    return *store;
}

}  // namespace

ZRNameTable::ZRNameTable()
    : m_ownStore(std::make_unique<internal::NameStore>()), m_store(m_ownStore.get()) {}

ZRNameTable::ZRNameTable(internal::NameStore& sharedStore) : m_store(&sharedStore) {}

ZRNameTable::~ZRNameTable() {
    if (m_ownStore != nullptr) {
        return;
    }
    // Taken here as well, since the last reference may go by the table's own `release`.
    const ZRMutex guard(s_sharedNameTableLock);
    s_sharedNameTable.store(nullptr, std::memory_order_release);
    m_store->restart();
}

unsigned int ZRNameTable::getTypeID() const {
    return getStaticTypeID();
}

bool ZRNameTable::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRNameTable::getTypeName() const {
    return u"ZRNameTable";
}

ZRNameEnum ZRNameTable::getSharedNameEnum(const UnicodeString& text) {
    return internal::internSharedName(internal::viewOf(text));
}

const UnicodeString& ZRNameTable::getSharedNameString(ZRNameEnum number) {
    if (number <= ZRN_LAST_BUILTIN) {
        return getBuiltinNameString(number);
    }
    if (s_sharedNameTable.load(std::memory_order_acquire) != nullptr) {
        const internal::NameStore* store = s_sharedStore.load(std::memory_order_acquire);
        if (const UnicodeString* text = store != nullptr ? store->text(number) : nullptr) {
            return *text;
        }
    }
    return ZREmptyString::EMPTY_VALUE;
}

void ZRNameTable::setupSharedNameTable() {
    if (s_sharedNameTable.load(std::memory_order_relaxed) == nullptr) {
        s_sharedNameTable.store(new ZRNameTable(sharedStoreMutexed()), std::memory_order_release);
    }
}

ZRNameTable* ZRNameTable::getSharedNameTable() {
    ZRNameTable* table = s_sharedNameTable.load(std::memory_order_acquire);
    if (table == nullptr) {
        const ZRMutex guard(s_sharedNameTableLock);
        setupSharedNameTable();
        table = s_sharedNameTable.load(std::memory_order_relaxed);
    }
    return table;
}

ZRNameTable* ZRNameTable::addRefSharedNameTable() {
    const ZRMutex guard(s_sharedNameTableLock);  // so that no last release comes in between
    setupSharedNameTable();
    ZRNameTable* table = s_sharedNameTable.load(std::memory_order_relaxed);
    table->addRef();
    return table;
}

void ZRNameTable::releaseSharedNameTable() {
    const ZRMutex guard(s_sharedNameTableLock);
    if (const ZRNameTable* table = s_sharedNameTable.load(std::memory_order_relaxed)) {
        table->release();
    }
}

void ZRNameTable::cleanup() {
    const ZRMutex guard;
    internal::forgetBuiltinNames();
    delete s_sharedNameTable.load(std::memory_order_relaxed);  // clears the pointer itself
    delete s_sharedStore.exchange(nullptr);
}

ZRNameEnum ZRNameTable::lookupName(const UnicodeString& text) const {
    const std::u16string_view view = internal::viewOf(text);
    const ZRNameEnum builtin = internal::findBuiltinName(view);
    if (builtin != ZRN_EMPTY || view.empty()) {
        return builtin;
    }
    return m_store->find(view, internal::keyedNameHash(view));
}

ZRNameEnum ZRNameTable::getNameEnum(const UnicodeString& text) {
    if (text.isEmpty()) {
        return ZRN_EMPTY;
    }
    const ZRNameEnum builtin = getBuiltinNameEnum(text);
    if (builtin != ZRN_EMPTY) {
        return builtin;
    }
    const ZRMutex guard(s_sharedNameTableLock);
    return getNonBuiltinNameEnumMutexed(text);
}

ZRNameEnum ZRNameTable::getNonBuiltinNameEnumMutexed(const UnicodeString& text) {
    const std::u16string_view view = internal::viewOf(text);
    return m_store->intern(view, internal::keyedNameHash(view));
}

const UnicodeString& ZRNameTable::getNameString(ZRNameEnum number) const {
    if (number <= ZRN_LAST_BUILTIN) {
        return getBuiltinNameString(number);
    }
    const UnicodeString* text = m_store->text(number);
    return text != nullptr ? *text : ZREmptyString::EMPTY_VALUE;
}

ZRNameEnum ZRNameTable::getNameLast() const {
    return m_store->last();
}

namespace internal {

ZRNameEnum internSharedName(std::u16string_view text) {
    if (text.empty()) {
        return ZRN_EMPTY;
    }
    const ZRNameEnum builtin = findBuiltinName(text);
    return builtin != ZRN_EMPTY ? builtin : internSharedNonBuiltinName(text, keyedNameHash(text));
}

ZRNameEnum internSharedNonBuiltinName(std::u16string_view text, std::uint64_t hash) {
    const ZRMutex guard(s_sharedNameTableLock);
    ZRNameTable::getSharedNameTable();  // made here when it is not there yet
    return sharedStoreMutexed().intern(text, hash);
}

}  // namespace internal
}  // namespace ZroCommon
