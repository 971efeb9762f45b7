#pragma once

#include <memory>

#include "zro/foundation/ZRRCObject.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

namespace internal {
class NameStore;
}

/// A table of names: the builtin ones, the same in every table, and its own from 1583 up.
///
/// The process shares one table, made on first need; it is the one behind `ZRName`. Holding a
/// reference on it (`addRefSharedNameTable`) keeps the numbering stable. Additions to any table
/// take one lock of the library; look-ups of builtin names take none.
class ZRO_API ZRNameTable : public ZRRCObject {
public:
    ZRNameTable();
    ~ZRNameTable() override;

    static unsigned int getStaticTypeID() { return 0x31FB5B85U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    /// 0 for the empty text and for a text that is no builtin name.
    static ZRNameEnum getBuiltinNameEnum(const UnicodeString& text);
    /// The row's text; empty outside 1 to 1582.
    static const UnicodeString& getBuiltinNameString(ZRNameEnum number);

    /// Interns a text in the shared table.
    static ZRNameEnum getSharedNameEnum(const UnicodeString& text);
    /// The text of a name of the shared table, empty when there is no such number. The reference
    /// stays valid until `cleanup`.
    static const UnicodeString& getSharedNameString(ZRNameEnum number);

    /// The shared table, made when needed; the reference count is not touched.
    static ZRNameTable* getSharedNameTable();
    /// The same with one reference more, to be given back by `releaseSharedNameTable`.
    static ZRNameTable* addRefSharedNameTable();
    /// One reference less; below a count of 1 the table goes and numbering begins anew.
    static void releaseSharedNameTable();

    /// Deletes the shared table whatever its count, and forgets the builtin names. Part of the
    /// library's `cleanup`; no names after it.
    static void cleanup();

    /// Looks up without adding and without a lock: 0 when unknown. Not to be called while another
    /// thread adds to this table.
    ZRNameEnum lookupName(const UnicodeString& text) const;
    /// Interns a text in this table; 0 for the empty text.
    ZRNameEnum getNameEnum(const UnicodeString& text);
    /// The text, empty for a number that this table does not know. No lock.
    const UnicodeString& getNameString(ZRNameEnum number) const;
    /// The highest number in use, 1582 in a new table.
    ZRNameEnum getNameLast() const;

private:
    explicit ZRNameTable(internal::NameStore& sharedStore);

    static void setupSharedNameTable();
    ZRNameEnum getNonBuiltinNameEnumMutexed(const UnicodeString& text);

    std::unique_ptr<internal::NameStore> m_ownStore;  // null in the shared table
    internal::NameStore* m_store;
};

}  // namespace ZroCommon
