#include "search/open_list.h"

#include <nmktoolbox/search/nmkAStarSearchNode.h>

#include <cmath>
#include <utility>

namespace nmk_search {

void OpenList::push(Record record) {
    watch(*record);
    m_records.push_back(std::move(record));
    ++m_live_count;
    add_to_heap(m_records.size() - 1);
}

void OpenList::clear() {
    m_records.clear();
    m_heap.clear();
    m_live_count = 0;
    m_nan_count = 0;
    m_sees_all_changes = true;
}

std::size_t OpenList::best() {
    if (must_rebuild()) rebuild();
    if (m_nan_count != 0) return best_by_scan();
    while (m_records[m_heap.first()] == nullptr) m_heap.drop_first();
    return m_heap.first();
}

void OpenList::erase(std::size_t number) {
    if (std::isnan(m_records[number]->f()) && m_nan_count != 0) --m_nan_count;
    m_records[number].reset();
    --m_live_count;
    if (!m_heap.is_empty() && m_heap.first() == number) m_heap.drop_first();
}

void OpenList::score(const nmkSearchGoal& goal) {
    for (const Record& record : m_records) {
        if (record != nullptr) record->calculate_h(goal);
    }
}

void OpenList::watch(nmkAStarSearchNode& record) {
    if (record.m_score_changed == nullptr) record.m_score_changed = m_score_changed;
    if (record.m_score_changed != m_score_changed) m_sees_all_changes = false;
}

// Adds the record to the heap, or counts it where its f is NaN.
void OpenList::add_to_heap(std::size_t number) {
    const double f = m_records[number]->f();
    if (std::isnan(f)) {
        ++m_nan_count;
    } else {
        m_heap.add(f, number);
    }
}

bool OpenList::must_rebuild() const {
    constexpr std::size_t few = 1024;
    const bool mostly_erased = m_records.size() > 2 * m_live_count + few;
    return *m_score_changed || !m_sees_all_changes || mostly_erased;
}

void OpenList::rebuild() {
    std::erase(m_records, nullptr);
    m_heap.clear();
    m_nan_count = 0;
    for (std::size_t number = 0; number < m_records.size(); ++number) add_to_heap(number);
    *m_score_changed = false;
}

std::size_t OpenList::best_by_scan() const {
    std::size_t best = 0;
    while (m_records[best] == nullptr) ++best;
    for (std::size_t i = best + 1; i < m_records.size(); ++i) {
        if (m_records[i] != nullptr && m_records[i]->f() < m_records[best]->f()) best = i;
    }
    return best;
}

}  // namespace nmk_search
