#include <gtest/gtest.h>
#include <ncamcontainer/coSender.h>

#include <memory>
#include <stdexcept>

namespace {

const coCallReason changed;
const coCallReason removed;

// Counts its calls.
struct Listener {
    explicit Listener(coSender& sender, const coCallReason& reason = changed, int enabled = 1)
        : receiver(10) {
        sender.call_list().add(new coCallFunc(&receiver, reason, count, this, enabled));
    }
    static void count(void* context, void* argument) {
        auto* const self = static_cast<Listener*>(context);
        ++self->calls;
        self->last_argument = argument;
    }

    coReceiver receiver;
    int calls = 0;
    void* last_argument = nullptr;
};

void announce_again(void* context, void*) {
    static_cast<coSender*>(context)->announce(changed, nullptr);
}

void fail(void*, void*) { throw std::runtime_error("the listener fails"); }

}  // namespace

TEST(coCallReason, copies_are_equal_and_others_are_not) {
    const coCallReason copy = changed;
    EXPECT_TRUE(copy == changed);
    EXPECT_FALSE(changed == removed);
}

TEST(coSender, calls_the_listeners_of_the_reason) {
    coSender sender(10);
    Listener first(sender);
    Listener second(sender, removed);
    int argument = 0;
    sender.announce(changed, &argument);
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(first.last_argument, &argument);
    EXPECT_EQ(second.calls, 0);
}

TEST(coSender, of_size_0_announces_nothing) {
    coSender sender(0);
    const Listener listener(sender);
    sender.announce(changed, nullptr);
    EXPECT_FALSE(sender.is_enabled());
    EXPECT_EQ(listener.calls, 0);
}

TEST(coSender, skips_calls_that_are_not_enabled) {
    coSender sender(10);
    const Listener listener(sender, changed, 0);
    sender.announce(changed, nullptr);
    EXPECT_EQ(listener.calls, 0);
}

TEST(coSender, drops_the_calls_of_a_receiver_that_was_destroyed) {
    coSender sender(10);
    auto gone = std::make_unique<Listener>(sender);
    EXPECT_EQ(sender.call_list().size(), 1);
    gone.reset();
    EXPECT_EQ(sender.call_list().size(), 0);
    sender.announce(changed, nullptr);
    sender.call_list().add(nullptr);
    EXPECT_EQ(sender.call_list().size(), 0);
}

TEST(coSender, that_is_asked_by_its_own_listener_does_not_announce_again) {
    coSender sender(10);
    coReceiver receiver(10);
    sender.call_list().add(new coCallFunc(&receiver, changed, announce_again, &sender, 1));
    const Listener listener(sender);
    sender.announce(changed, nullptr);
    EXPECT_EQ(listener.calls, 1);
}

TEST(coSender, announces_again_after_a_listener_has_thrown) {
    coSender sender(10);
    const Listener listener(sender);
    auto receiver = std::make_unique<coReceiver>(10);
    sender.call_list().add(new coCallFunc(receiver.get(), changed, fail, nullptr, 1));
    EXPECT_THROW(sender.announce(changed, nullptr), std::runtime_error);
    receiver.reset();
    sender.announce(changed, nullptr);
    EXPECT_EQ(listener.calls, 2);
}

TEST(coSender, may_be_destroyed_by_a_listener) {
    auto* const sender = new coSender(10);
    coReceiver receiver(10);
    const auto destroy = [](void* context, void*) { delete static_cast<coSender*>(context); };
    sender->call_list().add(new coCallFunc(&receiver, changed, destroy, sender, 1));
    const Listener listener(*sender);
    sender->announce(changed, nullptr);
    EXPECT_EQ(listener.calls, 1);
}
