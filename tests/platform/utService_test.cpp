// The registry of services, their names, and observing pointers.
#include <gtest/gtest.h>
#include <utils/utObserverPtr.h>
#include <utils/utService.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

struct Greeter : utService {
    virtual int number() const { return 7; }
};
struct Other : utService {};

utService& registry() { return utService::get_instance(); }

template <class Service>
Service* located(const char* name, const char* alternative = "") {
    return registry().locate_service<Service>(utServiceName(name), utServiceName(alternative));
}

struct Observed : utObservable {
    int number = 3;
};
struct Derived : Observed {};

}  // namespace

TEST(utServiceName, is_compared_by_its_text) {
    EXPECT_TRUE(utServiceName("clipboard") == utServiceName(utString("clipboard")));
    EXPECT_TRUE(utServiceName("clipboard") != utServiceName("Clipboard"));
    EXPECT_TRUE(utServiceName("a") < utServiceName("b"));
    EXPECT_EQ(utServiceName("clipboard").text(), "clipboard");
}

TEST(utServiceName, all_empty_names_are_equal) {
    EXPECT_TRUE(utServiceName().is_empty());
    EXPECT_TRUE(utServiceName("").is_empty());
    EXPECT_TRUE(utServiceName(nullptr) == utServiceName(""));
    EXPECT_FALSE(utServiceName("x").is_empty());
}

TEST(utService, is_located_by_its_name_until_it_is_destroyed) {
    EXPECT_EQ(located<Greeter>("utService_test"), nullptr);
    {
        Greeter greeter;
        EXPECT_EQ(registry().register_service(utServiceName("utService_test"), &greeter), 1);
        EXPECT_EQ(located<Greeter>("utService_test"), &greeter);
        EXPECT_EQ(located<Greeter>("utService_test")->number(), 7);
        EXPECT_EQ(located<Greeter>("utService_tes"), nullptr);
    }
    EXPECT_EQ(located<Greeter>("utService_test"), nullptr);
}

TEST(utService, the_alternative_is_used_when_the_name_is_not_registered) {
    Greeter first;
    Greeter second;
    registry().register_service(utServiceName("utService_first"), &first);
    registry().register_service(utServiceName("utService_second"), &second);
    EXPECT_EQ(located<Greeter>("utService_first", "utService_second"), &first);
    EXPECT_EQ(located<Greeter>("utService_missing", "utService_second"), &second);
    EXPECT_EQ(located<Greeter>("utService_missing"), nullptr);
    EXPECT_EQ(located<Greeter>(""), nullptr);
}

TEST(utService, a_service_of_another_class_is_not_located) {
    Other other;
    registry().register_service(utServiceName("utService_other"), &other);
    EXPECT_EQ(located<Greeter>("utService_other"), nullptr);
    EXPECT_EQ(located<utService>("utService_other"), &other);
}

TEST(utService, a_registration_replaces_the_earlier_one_and_null_removes_it) {
    Greeter first;
    Greeter second;
    const utServiceName name("utService_replaced");
    registry().register_service(name, &first);
    EXPECT_EQ(registry().register_service(name, &second), 1);
    EXPECT_EQ(located<Greeter>("utService_replaced"), &second);
    EXPECT_EQ(registry().register_service(name, nullptr), 1);
    EXPECT_EQ(located<Greeter>("utService_replaced"), nullptr);
}

TEST(utService, is_not_registered_under_the_empty_name) {
    Greeter greeter;
    EXPECT_EQ(registry().register_service(utServiceName(), &greeter), 0);
    EXPECT_EQ(located<Greeter>(""), nullptr);
}

TEST(utService, leaves_all_its_names_when_it_is_destroyed) {
    {
        Greeter greeter;
        registry().register_service(utServiceName("utService_one"), &greeter);
        registry().register_service(utServiceName("utService_two"), &greeter);
    }
    EXPECT_EQ(located<Greeter>("utService_one", "utService_two"), nullptr);
}

TEST(utService, threads_register_and_locate_at_the_same_time) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([i] {
            const std::string name = "utService_thread" + std::to_string(i);
            for (int round = 0; round < 500; ++round) {
                Greeter greeter;
                registry().register_service(utServiceName(name.c_str()), &greeter);
                EXPECT_EQ(located<Greeter>(name.c_str()), &greeter);
            }
            EXPECT_EQ(located<Greeter>(name.c_str()), nullptr);
        });
    }
    for (std::thread& thread : threads) thread.join();
}

TEST(utObserverPtr, is_null_by_default_and_for_null) {
    EXPECT_EQ(utObserverPtr<Observed>().get(), nullptr);
    EXPECT_EQ(utObserverPtr<Observed>(static_cast<Observed*>(nullptr)).get(), nullptr);
    EXPECT_FALSE(static_cast<bool>(utObserverPtr<Observed>()));
}

TEST(utObserverPtr, becomes_null_when_its_target_is_destroyed) {
    auto target = std::make_unique<Observed>();
    const utObserverPtr<Observed> observer(target.get());
    const utObserverPtr<Observed> copy = observer;
    EXPECT_EQ(observer->number, 3);
    EXPECT_EQ(&*copy, target.get());
    target.reset();
    EXPECT_EQ(observer.get(), nullptr);
    EXPECT_FALSE(static_cast<bool>(copy));
}

TEST(utObserverPtr, observes_a_shared_target_without_keeping_it) {
    auto target = std::make_shared<int>(5);
    const utObserverPtr<int> observer(target);
    EXPECT_EQ(*observer, 5);
    EXPECT_EQ(target.use_count(), 1);
    target.reset();
    EXPECT_EQ(observer.get(), nullptr);
}

TEST(utObserverPtr, observes_a_derived_object_as_its_base) {
    auto target = std::make_unique<Derived>();
    const utObserverPtr<Derived> derived(target.get());
    const utObserverPtr<const Observed> base = derived;
    EXPECT_EQ(base.get(), target.get());
    target.reset();
    EXPECT_EQ(base.get(), nullptr);
}

TEST(utObserverPtr, a_copy_of_the_target_has_no_observers) {
    auto target = std::make_unique<Observed>();
    const utObserverPtr<Observed> observer(target.get());
    Observed copy(*target);
    const utObserverPtr<Observed> observer_of_copy(&copy);
    *target = copy;
    EXPECT_EQ(observer.get(), target.get());
    target.reset();
    EXPECT_EQ(observer.get(), nullptr);
    EXPECT_EQ(observer_of_copy.get(), &copy);
    EXPECT_FALSE(observer == observer_of_copy);
}
