#include "search/open_list.h"

#include <nmktoolbox/search/nmkAStarSearchNode.h>

#include <cmath>
#include <utility>

namespace nmk_search {

void Open_list::push(Record record) {
    watch(*record);
    m_records.push_back(std::move(record));
    ++m_live;
    file(m_records.size() - 1);
}

void Open_list::clear() {
    m_records.clear();
    m_heap.clear();
    m_live = 0;
    m_not_numbers = 0;
    m_hears_all = true;
}

std::size_t Open_list::best() {
    if (must_rebuild()) rebuild();
    if (m_not_numbers != 0) return best_by_scan();
    while (m_records[m_heap.first()] == nullptr) m_heap.drop_first();
    return m_heap.first();
}

void Open_list::erase(std::size_t number) {
    if (std::isnan(m_records[number]->f()) && m_not_numbers != 0) --m_not_numbers;
    m_records[number].reset();
    --m_live;
    if (!m_heap.is_empty() && m_heap.first() == number) m_heap.drop_first();
}

void Open_list::score(const nmkSearchGoal& goal) {
    for (const Record& record : m_records) {
        if (record != nullptr) record->calculate_h(goal);
    }
}

void Open_list::watch(nmkAStarSearchNode& record) {
    if (record.m_score_changed == nullptr) record.m_score_changed = m_score_changed;
    if (record.m_score_changed != m_score_changed) m_hears_all = false;
}

// Puts a record at the end of the heap, or counts it.
void Open_list::file(std::size_t number) {
    const double f = m_records[number]->f();
    if (std::isnan(f)) {
        ++m_not_numbers;
    } else {
        m_heap.add(f, number);
    }
}

bool Open_list::must_rebuild() const {
    constexpr std::size_t few = 1024;
    const bool mostly_erased = m_records.size() > 2 * m_live + few;
    return *m_score_changed || !m_hears_all || mostly_erased;
}

void Open_list::rebuild() {
    std::erase(m_records, nullptr);
    m_heap.clear();
    m_not_numbers = 0;
    for (std::size_t number = 0; number < m_records.size(); ++number) file(number);
    *m_score_changed = false;
}

std::size_t Open_list::best_by_scan() const {
    std::size_t best = 0;
    while (m_records[best] == nullptr) ++best;
    for (std::size_t i = best + 1; i < m_records.size(); ++i) {
        if (m_records[i] != nullptr && m_records[i]->f() < m_records[best]->f()) best = i;
    }
    return best;
}

}  // namespace nmk_search
