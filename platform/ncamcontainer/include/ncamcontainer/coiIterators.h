// coiIterators.h: sinks and cursors that are passed by value.
//
// A coiFiller passes values on to a sink, which its copies share. A coiIterator reads values
// through a cursor; a copy has a cursor of its own at the same position. With them an interface
// accepts or returns values without naming a container.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// A sink for values.
template <class T>
class coiAbsFiller {
  public:
    virtual void add(T value) = 0;
    virtual ~coiAbsFiller() = default;

  protected:
    coiAbsFiller() = default;
    coiAbsFiller(const coiAbsFiller&) = default;
    coiAbsFiller& operator=(const coiAbsFiller&) = default;
};

/// The sink as it is passed by value; copies share one sink.
template <class T>
class coiFiller : public coiAbsFiller<T> {
  public:
    explicit coiFiller(std::shared_ptr<coiAbsFiller<T>> sink) noexcept : m_sink(std::move(sink)) {}

    void add(T value) override { m_sink->add(std::move(value)); }

  private:
    std::shared_ptr<coiAbsFiller<T>> m_sink;
};

/// A sink that calls a function with each value; an empty function throws std::bad_function_call.
template <class T>
class coiFillerImpl : public coiAbsFiller<T> {
  public:
    explicit coiFillerImpl(std::function<void(T)> function) : m_function(std::move(function)) {}

    void add(T value) override { m_function(std::move(value)); }

  private:
    std::function<void(T)> m_function;
};

/// A sink that calls `function` with each value.
template <class T>
coiFiller<T> coiFiller_from_function(std::function<void(T)> function) {
    return coiFiller<T>(std::make_shared<coiFillerImpl<T>>(std::move(function)));
}

/// A sink that appends each value to `container`, which must outlive it.
template <class C>
coiFiller<typename C::value_type> coiFiller_from_container(C& container) {
    using Value = typename C::value_type;
    return coiFiller_from_function<Value>(
        [&container](Value value) { container.insert(container.end(), std::move(value)); });
}

/// A cursor over values.
template <class T>
class coiAbsIterator {
  public:
    /// True while the cursor is not on a value.
    virtual bool undefined() const = 0;

    /// Moves before the first value.
    virtual void reset() = 0;

    /// Moves to the next value; false when there is none.
    virtual bool operator++() = 0;

    /// The value at the cursor, which must be on one.
    virtual const T& operator()() const = 0;

    virtual ~coiAbsIterator() = default;

  protected:
    coiAbsIterator() = default;
    coiAbsIterator(const coiAbsIterator&) = default;
    coiAbsIterator& operator=(const coiAbsIterator&) = default;
};

/// A cursor that can be copied through its base class.
template <class T>
class coiAbsCloneableIterator : public coiAbsIterator<T> {
  public:
    /// A new cursor at the same position.
    virtual std::unique_ptr<coiAbsCloneableIterator<T>> clone() const = 0;
};

/// The cursor as it is passed by value: owns a cursor, and copies it by cloning.
template <class T>
class coiIterator : public coiAbsIterator<T> {
  public:
    explicit coiIterator(std::unique_ptr<coiAbsCloneableIterator<T>> inner) noexcept
        : m_inner(std::move(inner)) {}
    coiIterator(const coiIterator& other) : m_inner(other.m_inner->clone()) {}
    coiIterator(coiIterator&& other) noexcept : m_inner(std::move(other.m_inner)) {}
    coiIterator& operator=(coiIterator other) noexcept {
        m_inner = std::move(other.m_inner);
        return *this;
    }

    bool undefined() const override { return m_inner->undefined(); }
    void reset() override { m_inner->reset(); }
    bool operator++() override { return ++*m_inner; }
    const T& operator()() const override { return (*m_inner)(); }

    /// The owned cursor.
    const coiAbsCloneableIterator<T>& inner() const { return *m_inner; }

  private:
    std::unique_ptr<coiAbsCloneableIterator<T>> m_inner;
};

/// A cursor over values that never change; copies share them. A function that receives one may
/// therefore read all values at once.
template <class T>
class coiFixedIterator final : public coiAbsCloneableIterator<T> {
  public:
    explicit coiFixedIterator(std::vector<T> values)
        : m_values(std::make_shared<const std::vector<T>>(std::move(values))) {}

    bool undefined() const override { return m_next == 0 || m_next > m_values->size(); }
    void reset() override { m_next = 0; }
    bool operator++() override {
        if (m_next <= m_values->size()) ++m_next;
        return m_next <= m_values->size();
    }
    const T& operator()() const override { return (*m_values)[m_next - 1]; }
    std::unique_ptr<coiAbsCloneableIterator<T>> clone() const override {
        return std::make_unique<coiFixedIterator>(*this);
    }

    const std::vector<T>& values() const { return *m_values; }

  private:
    std::shared_ptr<const std::vector<T>> m_values;
    std::size_t m_next = 0;  // of the value after the one at the cursor
};

/// A cursor before the first of `values`, which it keeps.
template <class T>
coiIterator<T> coiIterator_from_values(std::vector<T> values) {
    return coiIterator<T>(std::make_unique<coiFixedIterator<T>>(std::move(values)));
}
