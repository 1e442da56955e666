// nmkItemSorterGrid: items in rows, rows one after the other, optionally in zigzag.
//
// A row is the first item left and every item that equals it, by nmkItemComparator's equality
// within the tolerance. The rows are sorted by the secondary comparison of their first items, the
// items in a row by the primary one.
#pragma once

#include <nmktoolbox/ordering/nmkItemSorter.h>
#include <nmktoolbox/ordering/nmkSortPointList.h>
#include <nmktoolbox/ordering/nmkSortedList.h>

#include <vector>

/// Sorts items into rows and lays the rows out.
class NMKTOOLBOX_EXPORT nmkItemSorterGrid : public nmkItemSorter {
  public:
    nmkItemSorterGrid();
    ~nmkItemSorterGrid() override;

    void add_item(nmkSortItemPrf item) override;
    void add_items(nmkSortList& items) override;
    /// Sorts the items that were added and empties the sorter. Progress is not reported.
    nmkSortList& sort(double tolerance) override;

    /// How the rows are laid out; each flag is 0 until set.
    ///
    ///   new_zigzag             every second row runs in the opposite direction
    ///   new_reverse_first_row  the first row runs backwards
    ///   new_reverse_rows       the last row comes first
    void set_sort_directions(int new_zigzag, int new_reverse_first_row, int new_reverse_rows);

  private:
    bool sort_by_keys(double tolerance);
    void lay_out(const std::vector<std::vector<int>>& rows);
    void form_rows(double tolerance, nmkSortedListcoSortedList& rows);
    void go_forwards(const nmkSortedListcoSortedList& rows, int is_zigzag, int direction);
    void go_backwards(const nmkSortedListcoSortedList& rows, int is_zigzag, int direction);
    void add_items_from_list(const nmkSortedList& row, int direction);

    nmkSortPointList result;
    nmkSortPointList source;
    int reverse_first_row = 0;
    int reverse_rows = 0;
    int zigzag = 0;
};
