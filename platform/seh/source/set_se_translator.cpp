#include <seh/set_se_translator.h>

#include "fault_handler.h"

namespace {

constinit thread_local bool has_ended = false;

// What a thread has set, until it ends.
class Translation {
  public:
    Translation() = default;
    Translation(const Translation&) = delete;
    Translation& operator=(const Translation&) = delete;
    ~Translation() {
        nmk_seh::handle_faults_of_this_thread(nullptr);
        has_ended = true;
    }

    _se_translator_function set(_se_translator_function translator) {
        const _se_translator_function before = m_faults.translator;
        m_faults.translator = translator;
        if (translator != nullptr) {
            m_faults.stack.arm();
            m_faults.reserve.arm();
        }
        nmk_seh::handle_faults_of_this_thread(&m_faults);
        return before;
    }

    void reset_stack() {
        if (m_faults.translator != nullptr) m_faults.reserve.arm();
    }

  private:
    nmk_seh::ThreadFaults m_faults;
};

Translation& of_this_thread() {
    thread_local Translation translation;
    return translation;
}

}  // namespace

_se_translator_function _set_se_translator(_se_translator_function translator) {
    // In a destructor of the thread that comes later than this one.
    if (has_ended) return nullptr;
    return of_this_thread().set(translator);
}

int _resetstkoflw() {
    if (!has_ended) of_this_thread().reset_stack();
    return 1;
}
