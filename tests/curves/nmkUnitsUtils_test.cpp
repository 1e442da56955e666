#include <gtest/gtest.h>
#include <nmktoolbox/curves/nmkUnitsUtils.h>

#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace {

// A host whose factors are fixed, and which records what it is asked.
struct Host {
    double factor_from = 1.0;
    double factor_to = 1.0;
    std::vector<std::pair<int, int>> asked = {};
    std::vector<int> units_set = {};
};

double scale_of_host(nmkUnitsUtilsTrans direction, nmkUnitsType type, void* data) {
    Host& host = *static_cast<Host*>(data);
    host.asked.emplace_back(direction, type);
    return direction == nmkUnitsUtilsTransFrom ? host.factor_from : host.factor_to;
}

void set_units_of_host(nmkUnitsType type, void* data) {
    static_cast<Host*>(data)->units_set.push_back(type);
}

class nmkUnitsUtils_with_host : public testing::Test {
  protected:
    nmkUnitsUtils_with_host() {
        nmkUnitsUtils::set_scaling_callback(scale_of_host, &host);
        nmkUnitsUtils::set_units_callback(set_units_of_host, &host);
    }
    ~nmkUnitsUtils_with_host() override {
        nmkUnitsUtils::set_scaling_callback(nullptr, nullptr);
        nmkUnitsUtils::set_units_callback(nullptr, nullptr);
    }

    Host host;
};

}  // namespace

TEST(nmkUnitsUtils, without_a_callback_the_units_are_millimetres_and_factors_are_1) {
    EXPECT_EQ(nmkUnitsUtils::get_units(), nmkUnitsTypeMillimetres);
    EXPECT_EQ(nmkUnitsUtils::get_scale_from(nmkUnitsTypeInches), 1.0);
    EXPECT_EQ(nmkUnitsUtils::get_scale_to(nmkUnitsTypeInches), 1.0);
    EXPECT_EQ(nmkUnitsUtils::select(25.4, 1.0), 25.4);
    EXPECT_EQ(nmkUnitsUtils::get_current_units_string(true), utString("mm"));
}

TEST(nmkUnitsUtils, setting_units_without_a_callback_does_nothing) {
    nmkUnitsUtils::set_units(nmkUnitsTypeInches);
    EXPECT_EQ(nmkUnitsUtils::get_units(), nmkUnitsTypeMillimetres);
}

TEST(nmkUnitsUtils, names_of_units_have_a_short_and_a_long_form) {
    EXPECT_EQ(nmkUnitsUtils::get_units_string(nmkUnitsTypeMillimetres, true), utString("mm"));
    EXPECT_EQ(nmkUnitsUtils::get_units_string(nmkUnitsTypeMillimetres, false), utString("mm"));
    EXPECT_EQ(nmkUnitsUtils::get_units_string(nmkUnitsTypeInches, true), utString("in"));
    EXPECT_EQ(nmkUnitsUtils::get_units_string(nmkUnitsTypeInches, false), utString("Inches"));
}

TEST(nmkUnitsUtils, a_unit_that_is_not_known_has_the_empty_text_for_a_name) {
    for (const int value : {-1, 2, 7}) {
        EXPECT_EQ(nmkUnitsUtils::get_units_string(static_cast<nmkUnitsType>(value), true),
                  utString(""));
    }
}

TEST_F(nmkUnitsUtils_with_host, asks_for_the_factor_from_a_unit_with_1_and_to_it_with_0) {
    host.factor_from = 3.0;
    host.factor_to = 4.0;
    EXPECT_EQ(nmkUnitsUtils::get_scale_from(nmkUnitsTypeInches), 3.0);
    EXPECT_EQ(nmkUnitsUtils::get_scale_to(nmkUnitsTypeMillimetres), 4.0);
    EXPECT_EQ(host.asked, (std::vector<std::pair<int, int>>{{1, 1}, {0, 0}}));
}

TEST_F(nmkUnitsUtils_with_host, infers_the_units_from_the_factor_from_millimetres) {
    host.factor_from = 1.0 / 25.4;
    EXPECT_EQ(nmkUnitsUtils::get_units(), nmkUnitsTypeInches);
    EXPECT_EQ(host.asked, (std::vector<std::pair<int, int>>{{1, 0}}));
    EXPECT_EQ(nmkUnitsUtils::get_current_units_string(false), utString("Inches"));
}

TEST_F(nmkUnitsUtils_with_host, selects_the_second_value_in_inches_and_else_the_first) {
    host.factor_from = 1.0 / 25.4;
    EXPECT_EQ(nmkUnitsUtils::select(25.4, 1.0), 1.0);
    host.factor_from = 1.0;
    EXPECT_EQ(nmkUnitsUtils::select(25.4, 1.0), 25.4);
}

TEST_F(nmkUnitsUtils_with_host, hands_units_that_are_set_to_the_host) {
    nmkUnitsUtils::set_units(nmkUnitsTypeInches);
    nmkUnitsUtils::set_units(nmkUnitsTypeMillimetres);
    EXPECT_EQ(host.units_set, (std::vector<int>{1, 0}));
}

TEST_F(nmkUnitsUtils_with_host, setting_units_leaves_the_inferred_units_to_the_factor) {
    nmkUnitsUtils::set_units(nmkUnitsTypeInches);
    EXPECT_EQ(nmkUnitsUtils::get_units(), nmkUnitsTypeMillimetres);
}

TEST_F(nmkUnitsUtils_with_host, null_removes_a_callback) {
    host.factor_from = 0.5;
    nmkUnitsUtils::set_scaling_callback(nullptr, &host);
    nmkUnitsUtils::set_units_callback(nullptr, &host);
    EXPECT_EQ(nmkUnitsUtils::get_units(), nmkUnitsTypeMillimetres);
    nmkUnitsUtils::set_units(nmkUnitsTypeInches);
    EXPECT_TRUE(host.asked.empty());
    EXPECT_TRUE(host.units_set.empty());
}

namespace {

struct FactorCase {
    const char* name;
    double factor;
    nmkUnitsType units;
};

std::ostream& operator<<(std::ostream& stream, const FactorCase& one) { return stream << one.name; }

class nmkUnitsUtils_factor : public nmkUnitsUtils_with_host,
                             public testing::WithParamInterface<FactorCase> {};

}  // namespace

TEST_P(nmkUnitsUtils_factor, decides_the_units) {
    host.factor_from = GetParam().factor;
    EXPECT_EQ(nmkUnitsUtils::get_units(), GetParam().units);
}

INSTANTIATE_TEST_SUITE_P(
    cases, nmkUnitsUtils_factor,
    testing::Values(FactorCase{"exactly_the_limit_is_inches", 0.99999, nmkUnitsTypeInches},
                    FactorCase{"just_above_the_limit_is_millimetres", 0x1.fffeb074a771ep-1,
                               nmkUnitsTypeMillimetres},
                    FactorCase{"one_is_millimetres", 1.0, nmkUnitsTypeMillimetres},
                    FactorCase{"zero_is_inches", 0.0, nmkUnitsTypeInches},
                    FactorCase{"a_negative_factor_is_inches", -25.4, nmkUnitsTypeInches},
                    FactorCase{"nan_is_millimetres", std::numeric_limits<double>::quiet_NaN(),
                               nmkUnitsTypeMillimetres}),
    [](const auto& one) { return std::string(one.param.name); });
