// utObserverPtr: a pointer to an object that others own, which becomes null when the object is
// destroyed.
//
// The target derives from utObservable, or is owned by a std::shared_ptr. Do not destroy the target
// on one thread while another one uses an observer of it. While the destructors of derived classes
// run, observers still return the target.
#pragma once

#include <utils/utExport.h>

#include <memory>
#include <type_traits>
#include <utility>

/// A base class whose observers notice when the object is destroyed.
class UT_EXPORT utObservable {
  public:
    utObservable() : m_life(std::make_shared<char>()) {}

    /// A copy is an object of its own: it takes over no observers, and keeps those that it has.
    utObservable(const utObservable&) : utObservable() {}
    utObservable& operator=(const utObservable&) noexcept { return *this; }

    /// Expires when the object is destroyed.
    std::weak_ptr<const void> life() const noexcept { return m_life; }

  protected:
    ~utObservable() = default;

  private:
    std::shared_ptr<const void> m_life;
};

template <class T>
class utObserverPtr {
  public:
    /// Null.
    utObserverPtr() noexcept = default;

    /// Observes `target`, whose class derives from utObservable; null gives a null observer.
    utObserverPtr(T* target) : m_target(target) {
        static_assert(std::is_convertible_v<T*, const utObservable*>,
                      "the target must derive from utObservable or be owned by a shared_ptr");
        if (target != nullptr) m_life = target->life();
    }

    /// Observes the target of `target` without keeping it.
    utObserverPtr(const std::shared_ptr<T>& target) noexcept
        : m_target(target.get()), m_life(target) {}

    /// Observes the target of an observer of a derived class.
    template <class Derived>
    requires std::is_convertible_v<Derived*, T*> utObserverPtr(const utObserverPtr<Derived>& other)
    noexcept : m_target(other.get()), m_life(other.life()) {}

    /// The target, or null when there is none or it has been destroyed.
    T* get() const noexcept { return m_life.expired() ? nullptr : m_target; }
    T* operator->() const noexcept { return get(); }
    T& operator*() const noexcept { return *get(); }
    explicit operator bool() const noexcept { return get() != nullptr; }

    /// Expires when the target is destroyed.
    const std::weak_ptr<const void>& life() const noexcept { return m_life; }

    friend bool operator==(const utObserverPtr& a, const utObserverPtr& b) noexcept {
        return a.get() == b.get();
    }

  private:
    T* m_target = nullptr;
    std::weak_ptr<const void> m_life;
};
