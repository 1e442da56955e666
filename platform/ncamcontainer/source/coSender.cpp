#include <ncamcontainer/coSender.h>

#include <algorithm>
#include <atomic>

namespace {

constinit std::atomic<int> last_reason{0};

}  // namespace

coCallReason::coCallReason() noexcept : m_number(++last_reason) {}

void coCallFunc::call(const coCallReason& reason, void* argument) const {
    if (m_is_enabled == 0 || m_function == nullptr || !is_alive() || reason != m_reason) return;
    m_function(m_context, argument);
}

void coCallList::add(coCallFunc* call) {
    if (call == nullptr) return;
    std::shared_ptr<const coCallFunc> added(call);
    std::erase_if(m_calls, [](const auto& each) { return !each->is_alive(); });
    m_calls.push_back(std::move(added));
}

void coCallList::call(const coCallReason& reason, void* argument) const {
    const std::vector<std::shared_ptr<const coCallFunc>> calls = m_calls;
    for (const auto& each : calls) each->call(reason, argument);
}

int coCallList::size() const noexcept {
    return static_cast<int>(std::count_if(m_calls.begin(), m_calls.end(),
                                          [](const auto& each) { return each->is_alive(); }));
}

void coSender::announce(const coCallReason& reason, void* argument) {
    const std::shared_ptr<Announced> announced = m_announced;
    if (!is_enabled() ||
        std::find(announced->begin(), announced->end(), reason) != announced->end()) {
        return;
    }
    announced->push_back(reason);
    // Also where a call throws, or destroys this sender.
    const auto forget = [&](const void*) { std::erase(*announced, reason); };
    const std::unique_ptr<const void, decltype(forget)> at_the_end(announced.get(), forget);
    m_calls.call(reason, argument);
}
