#include <apsl/apHighResTime.h>
#include <apsl/apprintf.h>
#include <nmktoolbox/runtime/nmkStackBasedTimer.h>

#include <new>

namespace {

utString line_text(const utString& name, double seconds, int depth) {
    utString line("");
    for (int i = 1; i < depth; ++i) line << '-';
    if (depth > 1) line << '>';
    line << name << ": " << seconds << " seconds\n";
    return line;
}

// Deliberate: a line is itself the format, so "%%" in a name prints "%". A conversion in a name is
// printed as it is, because there is no argument for it.
void print(const utStringcoDList& lines) {
    apprintf("\n");
    for (const utString& line : lines) apprintf(line.c_str());
}

}  // namespace

// The clock is read last, so that the work on the stack is not measured.
nmkStackBasedTimer::nmkStackBasedTimer(const utString& name) : m_start_time(0.0), m_name(name) {
    live_timers().insert_last(this);
    m_start_time = apHighResTime::time();
}

nmkStackBasedTimer::~nmkStackBasedTimer() {
    nmkStackBasedTimercoDListPtrcoPtrcoDList& live = live_timers();
    if (live.read_last() == this) {
        const double end_time = apHighResTime::time();
        const int depth = live.size();
        live.remove_last();
        try {
            finish(end_time, depth);
        } catch (const std::bad_alloc&) {
            // The report is incomplete; a destructor has no other way to continue.
        }
        return;
    }
    nmkStackBasedTimercoDListPtrcoPtrcoDList::coCursor cursor(live);
    while (++cursor) {
        if (cursor.read() == this) cursor.remove_backwards();
    }
}

void nmkStackBasedTimer::finish(double end_time, int depth) {
    m_lines.insert_first(line_text(m_name, end_time - m_start_time, depth));
    const auto& live = live_timers();
    if (live.size() == 0) {
        print(m_lines);
    } else {
        live.read_last()->m_lines.take_last(m_lines);
    }
}

nmkStackBasedTimercoDListPtrcoPtrcoDList& nmkStackBasedTimer::live_timers() {
    // Never deleted: a static timer may be destroyed after other static objects.
    static auto* const stack = new nmkStackBasedTimercoDListPtrcoPtrcoDList;
    return *stack;
}
