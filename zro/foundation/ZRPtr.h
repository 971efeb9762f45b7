#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

namespace ZroCommon {

/// Shared ownership of one `ZRRCObject` descendant: one reference while it points there. May be
/// null. The pointed-to object may be shared between threads, one `ZRPtr` may not.
template <class T>
class ZRPtr {
public:
    ZRPtr() = default;
    ZRPtr(std::nullptr_t) {}
    ZRPtr(T* object) : m_object(object) { addRef(); }
    ZRPtr(const ZRPtr& other) : m_object(other.m_object) { addRef(); }
    ZRPtr(ZRPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    ZRPtr(const ZRPtr<U>& other) : m_object(other.get()) {
        addRef();
    }

    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    ZRPtr(ZRPtr<U>&& other) noexcept : m_object(other.detach()) {}

    ~ZRPtr() { release(); }

    ZRPtr& operator=(const ZRPtr& other) {  // NOLINT(bugprone-unhandled-self-assignment): a copy
        ZRPtr(other).swap(*this);
        return *this;
    }
    ZRPtr& operator=(ZRPtr&& other) noexcept {
        ZRPtr(std::move(other)).swap(*this);
        return *this;
    }
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    ZRPtr& operator=(const ZRPtr<U>& other) {
        ZRPtr(other).swap(*this);
        return *this;
    }
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    ZRPtr& operator=(ZRPtr<U>&& other) noexcept {
        ZRPtr(std::move(other)).swap(*this);
        return *this;
    }
    ZRPtr& operator=(T* object) {
        ZRPtr(object).swap(*this);
        return *this;
    }

    /// Takes over a reference that the caller already holds, without another `addRef`.
    [[nodiscard]] static ZRPtr adopt(T* object) {
        ZRPtr result;
        result.m_object = object;
        return result;
    }

    /// Gives the reference up to the caller, who has to `release` it.
    [[nodiscard]] T* detach() { return std::exchange(m_object, nullptr); }

    void swap(ZRPtr& other) noexcept { std::swap(m_object, other.m_object); }

    T* get() const { return m_object; }
    T& operator*() const { return *m_object; }
    T* operator->() const { return m_object; }
    operator T*() const { return m_object; }

private:
    void addRef() const {
        if (m_object != nullptr) {
            m_object->addRef();
        }
    }
    void release() const {
        if (m_object != nullptr) {
            m_object->release();
        }
    }

    T* m_object = nullptr;
};

}  // namespace ZroCommon
