// coSender.h: an object that announces events, and those that are called then.
//
// A sender keeps a list of calls, each with the reason that it is for, a function, and the receiver
// on whose behalf it was added. A call whose receiver has been destroyed is skipped and dropped.
// For one thread at a time.
#pragma once

#include <utils/utExport.h>
#include <utils/utObserverPtr.h>

#include <memory>
#include <vector>

/// What an announcement is about. Copies are equal; two that are made are different.
class UT_EXPORT coCallReason {
  public:
    coCallReason() noexcept;

    bool operator==(const coCallReason&) const noexcept = default;

  private:
    int m_number;
};

/// The object on whose behalf calls are made: they end with it.
class UT_EXPORT coReceiver : public utObservable {
  public:
    /// `size` is the number of calls that are expected; more are possible.
    explicit coReceiver(int size) noexcept : m_size(size) {}
    coReceiver(const coReceiver&) = delete;
    coReceiver& operator=(const coReceiver&) = delete;

    int size() const noexcept { return m_size; }

  private:
    int m_size;
};

/// One call: a function, what it is passed, and when it is called.
class UT_EXPORT coCallFunc {
  public:
    /// `context` is what was given to the constructor, `argument` what the sender announces.
    using Function = void (*)(void* context, void* argument);

    /// `receiver` and `context` are borrowed; with `enabled` 0 the call is never made.
    coCallFunc(coReceiver* receiver, coCallReason reason, Function function, void* context,
               int enabled)
        : m_receiver(receiver),
          m_reason(reason),
          m_function(function),
          m_context(context),
          m_is_enabled(enabled) {}

    /// False once the receiver has been destroyed.
    bool is_alive() const noexcept { return static_cast<bool>(m_receiver); }

    /// Calls the function where the reason is the call's own.
    void call(const coCallReason& reason, void* argument) const;

  private:
    utObserverPtr<coReceiver> m_receiver;
    coCallReason m_reason;
    Function m_function;
    void* m_context;
    int m_is_enabled;
};

/// The calls of a sender, in the order in which they were added.
class UT_EXPORT coCallList {
  public:
    /// Adds a call, of which the list becomes the owner; null is ignored.
    void add(coCallFunc* call);

    /// Makes the calls of that reason. They may add calls, which are made from the next
    /// announcement on, and destroy receivers and this list.
    void call(const coCallReason& reason, void* argument) const;

    /// Number of calls whose receiver exists.
    int size() const noexcept;

  private:
    std::vector<std::shared_ptr<const coCallFunc>> m_calls;
};

class UT_EXPORT coSender {
  public:
    /// `size` is the number of calls that are expected; 0 makes a sender that announces nothing.
    explicit coSender(int size) : m_size(size), m_announced(std::make_shared<Announced>()) {}
    coSender(const coSender&) = delete;
    coSender& operator=(const coSender&) = delete;

    bool is_enabled() const noexcept { return m_size != 0; }

    coCallList& call_list() noexcept { return m_calls; }

    /// Makes the calls of that reason. While they are made, announcing the same reason again does
    /// nothing, so that senders which listen to each other come to an end.
    void announce(const coCallReason& reason, void* argument);

  private:
    using Announced = std::vector<coCallReason>;

    int m_size;
    coCallList m_calls;
    std::shared_ptr<Announced> m_announced;  // the announcements being made; outlives the sender
};
