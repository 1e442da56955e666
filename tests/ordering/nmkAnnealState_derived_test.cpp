// nmkAnnealState_derived_test.cpp: states that a caller derives from those of the library, written
// in the way that comes naturally.

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

using plain::items_of;
using plain::Spread;

// Calls the assignment of its base with a source of its own type, as any C++ class would.
template <class Base>
struct TaggedState : Base {
    using Base::Base;

    static const utTypeID& ut_static_type() {
        static const utTypeID type("TaggedState", &Base::ut_static_type());
        return type;
    }
    const utTypeID& ut_dynamic_type() const override { return ut_static_type(); }

    TaggedState& operator=(const nmkAnnealState& other) override {
        ++assignments;
        const auto* source = dynamic_cast<const TaggedState*>(&other);
        if (source == nullptr || source == this) return *this;
        Base::operator=(*source);
        tag = source->tag;
        return *this;
    }

    int tag = 0;
    int assignments = 0;
};

struct TaggedPoints : TaggedState<nmkAnnealStatePoints> {
    explicit TaggedPoints(const giPoint3coPageArr& array) : TaggedState(&array) {}
};

// The points of six toolpaths or lines.
struct Sample {
    plain::TwoArrays arrays{Spread::space, 6, 5};

    template <class State>
    std::unique_ptr<State> make() const;
};

using Lines = TaggedState<nmkAnnealStateReversibleLines>;
using OneWay = TaggedState<nmkAnnealStateNonReversible>;
using Toolpaths = TaggedState<nmkAnnealOrderTPState>;
using TwoStates = TaggedState<nmkAnnealStateTwoItemStates>;
using Bare = TaggedState<nmkAnnealOrderState>;

template <>
std::unique_ptr<Bare> Sample::make() const {
    return std::make_unique<Bare>(6);
}
template <>
std::unique_ptr<TaggedPoints> Sample::make() const {
    return std::make_unique<TaggedPoints>(arrays.starts);
}
template <>
std::unique_ptr<Lines> Sample::make() const {
    return std::make_unique<Lines>(arrays.starts, arrays.ends);
}
template <>
std::unique_ptr<OneWay> Sample::make() const {
    return std::make_unique<OneWay>(arrays.starts, arrays.ends, 1);
}
template <>
std::unique_ptr<Toolpaths> Sample::make() const {
    std::vector<std::shared_ptr<nmkAnnealItemOrientedTP>> paths;
    for (int k = 0; k < 6; ++k) {
        paths.push_back(std::make_shared<nmkAnnealItemOrientedTP>(
            arrays.starts[k], arrays.ends[k], k / 2, giUnitVec3(giAxis::z), k % 2));
    }
    return std::make_unique<Toolpaths>(paths);
}
template <>
std::unique_ptr<TwoStates> Sample::make() const {
    nmkAnnealItemTPcoPageArrPrfINTERNALcoPrfcoPageArr paths;
    for (int k = 0; k < 6; ++k) {
        paths.add(nmkAnnealItemTPcoPageArrPrfINTERNALcoPrf(new nmkAnnealItemOrientedTP(
            arrays.starts[k], arrays.ends[k], 0, giUnitVec3(giAxis::z), 0)));
    }
    return std::make_unique<TwoStates>(paths, 0);
}

template <class State>
class nmkAnnealState_derived : public ::testing::Test {
  protected:
    nmkAnnealState_derived() {
        from->initialise();
        to->initialise();
        while (items_of(*from) == items_of(*to)) from->randomise();
        from->tag = 7;
    }

    void expect_whole_copy() const {
        EXPECT_EQ(items_of(*to), items_of(*from));
        EXPECT_EQ(plain::Inside::length_of(*to), plain::Inside::length_of(*from));
        EXPECT_EQ(to->tag, 7);
    }

    Sample sample;
    std::unique_ptr<State> from = sample.make<State>();
    std::unique_ptr<State> to = sample.make<State>();
};

using DerivedStates = ::testing::Types<Bare, TaggedPoints, Lines, OneWay, Toolpaths, TwoStates>;
TYPED_TEST_SUITE(nmkAnnealState_derived, DerivedStates);

TYPED_TEST(nmkAnnealState_derived, is_copied_whole_as_the_engine_copies_it) {
    nmkAnnealState& target = *this->to;
    target = *this->from;
    this->expect_whole_copy();
}

TYPED_TEST(nmkAnnealState_derived, is_copied_whole_through_references_to_the_order_state) {
    nmkAnnealOrderState& target = *this->to;
    const nmkAnnealOrderState& source = *this->from;
    target = source;
    this->expect_whole_copy();
    EXPECT_EQ(this->to->assignments, 1);
}

TYPED_TEST(nmkAnnealState_derived, is_of_its_own_kind_when_it_only_reports_its_dynamic_type) {
    const nmkAnnealState& state = *this->from;
    EXPECT_NE(state.ut_is_kind_of(TypeParam::ut_static_type()), 0);
    EXPECT_NE(state.ut_is_kind_of(nmkAnnealOrderState::ut_static_type()), 0);
    EXPECT_NE(state.ut_is_kind_of(nmkAnnealState::ut_static_type()), 0);
    EXPECT_EQ(nmkAnnealOrderState(4).ut_is_kind_of(TypeParam::ut_static_type()), 0);
}

TEST(nmkAnnealState, can_be_assigned_to_after_an_assignment_that_threw) {
    struct Refusing : nmkAnnealOrderState {
        using nmkAnnealOrderState::nmkAnnealOrderState;
        Refusing& operator=(const nmkAnnealState& other) override {
            if (refuses) throw 1;
            nmkAnnealOrderState::operator=(static_cast<const nmkAnnealOrderState&>(other));
            ++copies;
            return *this;
        }
        bool refuses = true;
        int copies = 0;
    };
    Refusing from(4), to(4);
    nmkAnnealOrderState& target = to;
    EXPECT_THROW(target = static_cast<const nmkAnnealOrderState&>(from), int);
    to.refuses = false;
    target = static_cast<const nmkAnnealOrderState&>(from);
    EXPECT_EQ(to.copies, 1);
}

TEST(nmkAnnealState, is_of_the_kind_it_derives_from_though_its_own_type_names_no_base) {
    struct Unrelated : nmkAnnealOrderState {
        using nmkAnnealOrderState::nmkAnnealOrderState;
        const utTypeID& ut_dynamic_type() const override {
            static const utTypeID type("Unrelated");
            return type;
        }
    };
    const Unrelated state(4);
    EXPECT_NE(state.ut_is_kind_of(state.ut_dynamic_type()), 0);
    EXPECT_NE(state.ut_is_kind_of(nmkAnnealOrderState::ut_static_type()), 0);
}

TEST(nmkAnnealStateTester, copies_the_whole_of_a_callers_state) {
    const plain::TwoArrays arrays(Spread::square, 5, 3);
    TaggedPoints state(arrays.starts), best(arrays.starts);
    state.tag = 3;
    std::ostringstream out;
    nmkAnnealStateTester::test(state, best, 1, 0, out);
    EXPECT_EQ(best.tag, 3);
    EXPECT_EQ(items_of(state), items_of(best));
}

}  // namespace
