// apStringPos.h: a position in a wide text.
#pragma once

#include <compare>

/// An index in code units; from apString::begin and end. Arithmetic is not checked: operations that
/// take a position cut it to the text.
class apStringPos {
  public:
    apStringPos() noexcept = default;
    explicit apStringPos(int index) noexcept : m_index(index) {}

    int index() const noexcept { return m_index; }

    apStringPos& operator+=(int count) noexcept {
        m_index += count;
        return *this;
    }
    apStringPos& operator-=(int count) noexcept { return *this += -count; }
    apStringPos& operator++() noexcept { return *this += 1; }
    apStringPos& operator--() noexcept { return *this -= 1; }
    apStringPos operator++(int) noexcept { return apStringPos(m_index++); }
    apStringPos operator--(int) noexcept { return apStringPos(m_index--); }

    friend apStringPos operator+(apStringPos position, int count) noexcept {
        return position += count;
    }
    friend apStringPos operator-(apStringPos position, int count) noexcept {
        return position -= count;
    }
    friend int operator-(apStringPos left, apStringPos right) noexcept {
        return left.m_index - right.m_index;
    }
    friend bool operator==(apStringPos, apStringPos) noexcept = default;
    friend auto operator<=>(apStringPos, apStringPos) noexcept = default;

  private:
    int m_index = 0;
};
