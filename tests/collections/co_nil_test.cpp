// The nil element of a container class is one object in a process, also beside libraries that hide
// what they do not export.
#include <collections/nil_library/nil_library.h>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <ncamcontainer/co_nil.h>

#include <array>
#include <cstdint>
#include <memory>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

extern "C" nmk_test::NilAddresses nil_addresses_in_library();

namespace {

using AddressFunction = nmk_test::NilAddresses (*)();

// A loaded copy of the plugin; its symbols are not visible to other libraries.
class Plugin {
  public:
    Plugin() : m_handle(dlopen(NMK_NIL_PLUGIN, RTLD_NOW | RTLD_LOCAL)) {
        if (m_handle == nullptr) throw std::runtime_error(dlerror());
    }
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    ~Plugin() { dlclose(m_handle); }

    nmk_test::NilAddresses nil_addresses() const {
        return reinterpret_cast<AddressFunction>(dlsym(m_handle, "nil_addresses_in_library"))();
    }

  private:
    void* m_handle;
};

}  // namespace

TEST(co_nil, is_one_object_in_the_program_and_in_a_library_with_hidden_visibility) {
    EXPECT_EQ(nil_addresses_in_library(), nmk_test::nil_addresses());
}

TEST(co_nil, is_one_object_in_the_program_and_in_a_plugin_that_exports_one_function) {
    EXPECT_EQ(Plugin().nil_addresses(), nmk_test::nil_addresses());
}

TEST(co_nil, is_an_object_of_its_own_for_each_container_class) {
    const nmk_test::NilAddresses addresses = nmk_test::nil_addresses();
    const std::set<const void*> different(addresses.begin(), addresses.end());
    EXPECT_EQ(different.size(), addresses.size());
}

TEST(co_nil, of_a_class_with_virtual_functions_outlives_the_plugin_that_made_it) {
    const void* made_by_plugin = nullptr;
    {
        const Plugin plugin;
        made_by_plugin = plugin.nil_addresses()[3];
    }
    const nmk_test::HiddenElement& nil = coPageArr<nmk_test::HiddenElement>::nil();
    EXPECT_EQ(&nil, made_by_plugin);
    EXPECT_EQ(nil.number(), 42);
    EXPECT_EQ(Plugin().nil_addresses()[3], made_by_plugin);
}

TEST(co_nil, is_one_object_when_several_threads_ask_at_the_same_time) {
    struct OnlyUsedHere {
        int number = 5;
    };
    std::array<const OnlyUsedHere*, 8> found{};
    std::vector<std::thread> threads;
    for (const OnlyUsedHere*& nil : found) {
        threads.emplace_back([&nil] {
            const auto made = std::make_shared<const OnlyUsedHere>();
            nil = static_cast<const OnlyUsedHere*>(nmk_container::registered_nil(
                {typeid(OnlyUsedHere), sizeof(OnlyUsedHere), alignof(OnlyUsedHere)}, made));
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const OnlyUsedHere* nil : found) EXPECT_EQ(nil, found[0]);
    EXPECT_EQ(found[0]->number, 5);
}

TEST(co_nil, of_classes_with_one_name_and_different_sizes_are_different_objects) {
    const auto small = std::make_shared<const std::int32_t>(1);
    const auto large = std::make_shared<const std::int64_t>(2);
    struct Container {};
    const void* const first = nmk_container::registered_nil(
        {typeid(Container), sizeof *small, alignof(std::int32_t)}, small);
    const void* const second = nmk_container::registered_nil(
        {typeid(Container), sizeof *large, alignof(std::int64_t)}, large);
    EXPECT_EQ(first, small.get());
    EXPECT_EQ(second, large.get());
}
