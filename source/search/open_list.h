// open_list.h: the records that wait to be popped, in the order of insertion.
//
// The best is the one that a scan from the front finds which moves on to a later record only when
// its f is strictly less: the smallest f, and among equals the oldest. A heap over f and age
// answers that at once. An f that is not a number compares with nothing, and then the list is
// scanned.
//
// f is kept in the heap, so the list must hear of every change: a record tells the list that it
// stands in when it is scored anew, by whomever. A record that already tells another list cannot
// tell this one, and then f is read afresh each time.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "search/score_heap.h"

class nmkAStarSearchNode;
class nmkSearchGoal;

namespace nmk_search {

class OpenList {
  public:
    using Record = std::shared_ptr<nmkAStarSearchNode>;

    bool is_empty() const { return m_live_count == 0; }
    void push(Record record);
    void clear();

    /// The number of the best record. It stays the record's until best is called again. The list
    /// must not be empty.
    std::size_t best();
    const Record& operator[](std::size_t number) const { return m_records[number]; }
    void erase(std::size_t number);

    /// Scores every record anew, oldest first.
    void score(const nmkSearchGoal& goal);

  private:
    void watch(nmkAStarSearchNode& record);
    void file(std::size_t number);
    bool must_rebuild() const;
    void rebuild();
    std::size_t best_by_scan() const;

    std::vector<Record> m_records;  // in the order of insertion; empty where one was erased
    ScoreHeap m_heap;               // of those whose f is a number, and of some that were erased
    std::size_t m_live_count = 0;
    std::size_t m_nan_count = 0;  // live records whose f is not a number
    std::shared_ptr<bool> m_score_changed = std::make_shared<bool>(false);
    bool m_sees_all_changes = true;  // false: a record tells its changes to another list
};

}  // namespace nmk_search
