// open_list.h: the records that wait to be popped, in the order of insertion.
//
// The best record is the one that a scan from the front finds when it moves to a later record only
// if its f is strictly less: the smallest f, and among equals the oldest. A heap over f and age
// provides it. An f that is NaN compares with nothing, and then the list is scanned.
//
// The heap keeps f, so the list must see every change of a score: a record sets the flag of its
// list whenever g or h is computed again. A record that is already in another list has the flag of
// that one, and then this list reads each f again every time.
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

    /// The number of the best record, which is valid until best is called again. The list must not
    /// be empty.
    std::size_t best();
    const Record& operator[](std::size_t number) const { return m_records[number]; }
    void erase(std::size_t number);

    /// Computes h of every record again, oldest first.
    void score(const nmkSearchGoal& goal);

  private:
    void watch(nmkAStarSearchNode& record);
    void add_to_heap(std::size_t number);
    bool must_rebuild() const;
    void rebuild();
    std::size_t best_by_scan() const;

    std::vector<Record> m_records;  // in the order of insertion; empty where one was erased
    ScoreHeap m_heap;               // of those whose f is a number, and of some that were erased
    std::size_t m_live_count = 0;
    std::size_t m_nan_count = 0;  // live records whose f is not a number
    std::shared_ptr<bool> m_score_changed = std::make_shared<bool>(false);
    bool m_sees_all_changes = true;  // false: a record has the flag of another list
};

}  // namespace nmk_search
