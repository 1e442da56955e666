// nmkItemSorterGrid: items in rows, rows one after the other, there and back if wanted.
//
// A row is the first item left and every item that equals it, by nmkItemComparator's equality
// within the tolerance. Rows stand in the order of the secondary comparison of their first items,
// items in a row in the order of the primary one.
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
    /// Sorts and uses up what was added. No progress is told.
    nmkSortList& sort(double tolerance) override;

    /// How the rows are laid out; each flag is 0 until set.
    ///
    ///   zigzag             every second row runs the other way
    ///   reverse_first_row  the first row runs backwards
    ///   reverse_rows       the last row comes first
    void set_sort_directions(int zigzag, int reverse_first_row, int reverse_rows);

  private:
    bool sort_by_keys(double tolerance);
    void lay_out(const std::vector<std::vector<int>>& rows);
    void form_rows(double tolerance, nmkSortedListcoSortedList& rows);
    void go_forwards(const nmkSortedListcoSortedList& rows, int zigzag, int direction);
    void go_backwards(const nmkSortedListcoSortedList& rows, int zigzag, int direction);
    void add_items_from_list(const nmkSortedList& row, int direction);

    nmkSortPointList result;
    nmkSortPointList source;
    int reverse_first_row = 0;
    int reverse_rows = 0;
    int zigzag = 0;
};
