// coPrf: a reference-counted pointer.
//
// It shares the record of a std::shared_ptr: a pointer and two atomic counts, uses and weak uses.
// Handles may be copied and released on several threads as long as each handle object is used by
// one. A handle made with coPrfExtern is counted like any other but never deletes its target.
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

/// Selects the constructor that does not take ownership of the target.
struct coPrfExtern {};

/// The deleter of external handles; external() looks for it in the record.
struct coPrfExternalDeleter {
    void operator()(const void*) const noexcept {}
};

template <class T>
class coPrf {
  public:
    using element_type = T;

    /// Null.
    coPrf() noexcept = default;

    /// Takes ownership of `target`: the last handle deletes it.
    explicit coPrf(T* target) : m_pointer(target) {}

    /// Shares the target of `pointer`, and its counts.
    coPrf(std::shared_ptr<T> pointer) noexcept : m_pointer(std::move(pointer)) {}

    /// Refers to `target` without owning it.
    coPrf(coPrfExtern, T* target) : m_pointer(target, coPrfExternalDeleter()) {}

    /// Shares the target of a handle to a derived class.
    template <class Derived>
    requires std::is_convertible_v<Derived*, T*> coPrf(const coPrf<Derived>& other)
    noexcept : m_pointer(other.shared()) {}

    /// The same handle as a standard pointer, which shares the counts.
    operator std::shared_ptr<T>() const noexcept { return m_pointer; }
    const std::shared_ptr<T>& shared() const noexcept { return m_pointer; }

    /// The target, or null.
    T* get() const noexcept { return m_pointer.get(); }
    T* operator->() const noexcept { return m_pointer.get(); }
    T& operator*() const noexcept { return *m_pointer; }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }

    /// Number of handles that share the target; 0 for a null handle.
    int use_count() const noexcept { return static_cast<int>(m_pointer.use_count()); }

    /// True for a handle that was made with coPrfExtern, and for its copies.
    bool external() const noexcept {
        return std::get_deleter<coPrfExternalDeleter>(m_pointer) != nullptr;
    }

    /// Makes the handle null.
    void reset() noexcept { m_pointer.reset(); }

    /// Whether the two handles have the same target.
    friend bool operator==(const coPrf& a, const coPrf& b) noexcept {
        return a.m_pointer == b.m_pointer;
    }

  private:
    std::shared_ptr<T> m_pointer;
};
