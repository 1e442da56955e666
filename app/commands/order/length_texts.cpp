// length_texts.cpp: see length_texts.h.

#include "commands/order/length_texts.h"

#include "text/number_format.h"

namespace nmk_order {

namespace {

constexpr int diameter_decimals = 3;
// From here on a travel has no decimals.
constexpr double long_travel = 1e5;

}  // namespace

std::string length_unit(nmk_job::JobUnits units) {
    return units == nmk_job::JobUnits::inches ? "in" : "mm";
}

LengthTexts::LengthTexts(nmk_job::JobUnits units)
    : m_units(units), m_more_decimals(units == nmk_job::JobUnits::inches ? 1 : 0) {}

std::string LengthTexts::diameter(double length) const {
    return nmk_text::fixed_number(in_unit(length), diameter_decimals + m_more_decimals);
}

std::string LengthTexts::tool(double length) const {
    return nmk_text::short_number(in_unit(length), diameter_decimals + m_more_decimals) + " " +
           length_unit(m_units);
}

std::string LengthTexts::travel(double length) const {
    const bool is_long = in_unit(length) >= long_travel;
    return nmk_text::fixed_number(in_unit(length), is_long ? 0 : 1 + m_more_decimals);
}

std::string LengthTexts::travel_with_unit(double length) const {
    return travel(length) + " " + length_unit(m_units);
}

double LengthTexts::in_unit(double length) const { return length / nmk_job::mm_of(m_units); }

}  // namespace nmk_order
