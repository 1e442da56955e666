// Curves and surfaces of every kind, stored and loaded.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <typeinfo>

#include "archive_failure.h"
#include "ngk/sample_curves.h"
#include "stored_handles.h"

namespace {

using stored_handles::Bytes;
using stored_handles::loaded;
using stored_handles::stored;

const double not_a_number = std::nan("");

/// Curves that a record could lose something of, beside those of sample_curves.
template <int Dimension>
std::vector<sample_curves::Named<Dimension>> further_curves() {
    using Curve = ngkCurve<Dimension>;
    using Ptr = typename Curve::Ptr;
    using Vector = typename Curve::Vector;
    const auto at = sample_curves::random_points<Dimension>(3, 31);
    const auto circle = sample_curves::circle<Dimension>();
    const ngkLine<Dimension> along(at[0], at[1]);
    const auto line = [&](ngkLineKind kind) {
        return Ptr(new ngkLine<Dimension>(at[0], along.direction(), kind));
    };
    Vector tiny = along.direction();
    tiny.x *= 1e-320;
    tiny.y *= 1e-320;
    const auto lone = std::make_shared<ngkCompCurve<Dimension>>(not_a_number);
    lone->add_segment_end(Ptr(new ngkLine<Dimension>(along)));
    std::vector<sample_curves::Named<Dimension>> curves = {
        {"half_line", line(ngkLineKind::half)},
        {"infinite_line", line(ngkLineKind::infinite)},
        {"half_line_of_a_denormal_direction",
         Ptr(new ngkLine<Dimension>(at[0], tiny, ngkLineKind::half))},
        {"line_of_no_length", Ptr(new ngkLine<Dimension>(at[0], at[0]))},
        {"polyline_without_points", Ptr(new ngkPolyline<Dimension>())},
        {"polyline_of_one_point", Ptr(new ngkPolyline<Dimension>(std::span(at).first(1)))},
        {"reversed_circle", circle.reverse()},
        {"circle_reversed_twice", circle.reverse()->reverse()},
        {"circle_of_radius_0", Ptr(new ngkCircle<Dimension>(circle.plane(), 0.0))},
        {"arc_between_points", Ptr(new ngkArc<Dimension>(circle, at[0], at[1]))},
        {"reversed_arc", ngkArc<Dimension>(circle, 0.5, 2.0).reverse()},
        {"composite_with_nan_for_its_tolerance", Ptr(std::shared_ptr<const Curve>(lone))}};
    for (const auto& one : curves) EXPECT_TRUE(one.curve && one.curve->is_valid()) << one.name;
    return curves;
}

template <int Dimension>
std::vector<sample_curves::Named<Dimension>> all_curves();
template <>
std::vector<sample_curves::Named<2>> all_curves<2>() {
    auto curves = sample_curves::in_the_plane();
    for (const auto& one : further_curves<2>()) curves.push_back(one);
    return curves;
}
template <>
std::vector<sample_curves::Named<3>> all_curves<3>() {
    auto curves = sample_curves::in_space();
    for (const auto& one : further_curves<3>()) curves.push_back(one);
    return curves;
}

template <class Value>
bool same_bits(const Value& a, const Value& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

template <int Dimension>
void expect_same(const ngkCurve<Dimension>& a, const ngkCurve<Dimension>& b) {
    EXPECT_TRUE(typeid(a) == typeid(b));
    ASSERT_EQ(a.segment_count(), b.segment_count());
    for (int segment = 0; segment < a.segment_count(); ++segment) {
        const ngkRange range = a.range(segment);
        ASSERT_EQ(range, b.range(segment));
        const double low = std::isfinite(range.low) ? range.low : -3.0;
        const double high = std::isfinite(range.high) ? range.high : 3.0;
        for (int i = 0; i <= 32; ++i) {
            const ngkT t(segment, i == 32 ? high : low + (high - low) * i / 32.0);
            EXPECT_TRUE(same_bits(a.jet_at(t), b.jet_at(t))) << t.value;
        }
    }
    EXPECT_EQ(a.length(), b.length());
    const auto query = sample_curves::random_points<Dimension>(1, 77)[0];
    EXPECT_EQ(a.closest_point(query).t, b.closest_point(query).t);
}

template <int Dimension>
void check_round_trip(const typename ngkCurve<Dimension>::Ptr& curve) {
    const Bytes bytes = stored(curve);
    const auto again = loaded<typename ngkCurve<Dimension>::Ptr>(bytes);
    ASSERT_TRUE(again && again->is_valid());
    expect_same<Dimension>(*curve, *again);
    EXPECT_EQ(stored(again), bytes);
}

template <class Handle>
CArchiveException::Cause cause_of_loading(const Bytes& bytes) {
    return cause_of([&] { loaded<Handle>(bytes); });
}

template <class Handle>
void check_prefixes(const Handle& handle) {
    const Bytes whole = stored(handle);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        ASSERT_EQ(cause_of_loading<Handle>(prefix), CArchiveException::endOfFile) << size;
    }
}

/// With each bit changed in turn, in every byte: an exception, or a curve that can be stored.
template <class Handle>
void check_changed_bytes(const Handle& handle) {
    const Bytes whole = stored(handle);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const unsigned change : {0x01U, 0x80U, 0xFFU}) {
            Bytes bytes = whole;
            bytes[at] = static_cast<unsigned char>(bytes[at] ^ change);
            Handle again;
            const auto cause = cause_of([&] { again = loaded<Handle>(bytes); });
            if (cause != CArchiveException::none) continue;
            ASSERT_TRUE(!again || again->is_valid());
            EXPECT_EQ(stored(loaded<Handle>(stored(again))), stored(again));
        }
    }
}

class ngkCurve3_stored : public testing::TestWithParam<sample_curves::Named<3>> {};
class ngkCurve2_stored : public testing::TestWithParam<sample_curves::Named<2>> {};

struct NamedSurface {
    const char* name;
    ngkSurfPtr surface;

    friend std::ostream& operator<<(std::ostream& stream, const NamedSurface& one) {
        return stream << one.name;
    }
};

std::vector<NamedSurface> surfaces() {
    const giWorkplane3 plane = sample_curves::slanted();
    const std::array<giPoint3, 4> corners = {giPoint3(0, 0, 0), giPoint3(3, 0, 1),
                                             giPoint3(0, 2, -1), giPoint3(3, 3, 2)};
    return {{"plane", ngkSurfPtr(new ngkPlaneSurf(plane))},
            {"cylinder", ngkSurfPtr(new ngkCylinderSurf(plane, 1.5))},
            {"sphere", ngkSurfPtr(new ngkSphereSurf(plane, 2.5))},
            {"bilinear", ngkSurfPtr(new ngkBilinearSurf(corners))},
            {"nurbs", sample_curves::nurbs_surface(false)},
            {"rational_nurbs", sample_curves::nurbs_surface(true, 2)}};
}

class ngkSurf_stored : public testing::TestWithParam<NamedSurface> {};

ngkCurvePtr3 line() { return ngkCurvePtr3(new ngkLine3(giPoint3(1, 2, 3), giPoint3(4, 5, 6))); }

ngkCurvePtr3 reversed(ngkCurvePtr3 curve, int times) {
    for (; times > 0; --times) curve = ngkCurvePtr3(new ngkReverseCurve3(curve));
    return curve;
}

/// A curve of the host's own.
class HostCurve : public ngkLine3 {
  public:
    using ngkLine3::ngkLine3;
};

}  // namespace

TEST_P(ngkCurve3_stored, evaluates_to_the_same_bits) { check_round_trip<3>(GetParam().curve); }
TEST_P(ngkCurve2_stored, evaluates_to_the_same_bits) { check_round_trip<2>(GetParam().curve); }
TEST_P(ngkCurve3_stored, is_refused_where_the_stream_is_cut) { check_prefixes(GetParam().curve); }
TEST_P(ngkCurve2_stored, is_refused_where_the_stream_is_cut) { check_prefixes(GetParam().curve); }
TEST_P(ngkCurve3_stored, is_refused_or_valid_where_a_byte_is_changed) {
    check_changed_bytes(GetParam().curve);
}
TEST_P(ngkCurve2_stored, is_refused_or_valid_where_a_byte_is_changed) {
    check_changed_bytes(GetParam().curve);
}

INSTANTIATE_TEST_SUITE_P(kinds, ngkCurve3_stored, testing::ValuesIn(all_curves<3>()),
                         [](const auto& one) { return std::string(one.param.name); });
INSTANTIATE_TEST_SUITE_P(kinds, ngkCurve2_stored, testing::ValuesIn(all_curves<2>()),
                         [](const auto& one) { return std::string(one.param.name); });

TEST_P(ngkSurf_stored, evaluates_to_the_same_bits) {
    const ngkSurfPtr surface = GetParam().surface;
    const Bytes bytes = stored(surface);
    const auto again = loaded<ngkSurfPtr>(bytes);
    ASSERT_TRUE(again && again->is_valid());
    const ngkSurf& one = *surface;
    const ngkSurf& other = *again;
    EXPECT_TRUE(typeid(one) == typeid(other));
    EXPECT_EQ(one.u_range(), other.u_range());
    EXPECT_EQ(one.v_range(), other.v_range());
    for (int i = 0; i < 64; ++i)
        EXPECT_TRUE(same_bits(one.jet_at(i / 64.0, 1.0 - i / 64.0),
                              other.jet_at(i / 64.0, 1.0 - i / 64.0)));
    EXPECT_EQ(stored(again), bytes);
}

TEST_P(ngkSurf_stored, is_refused_where_the_stream_is_cut) { check_prefixes(GetParam().surface); }
TEST_P(ngkSurf_stored, is_refused_or_valid_where_a_byte_is_changed) {
    check_changed_bytes(GetParam().surface);
}

INSTANTIATE_TEST_SUITE_P(kinds, ngkSurf_stored, testing::ValuesIn(surfaces()),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(ngk_persistence, has_a_layout_that_does_not_change) {
    // Present; a new class of version 1 with its name; bounded; start and end.
    Bytes expected = {1, 0xFF, 0xFF, 1, 0, 8, 0, 'n', 'g', 'k', 'L', 'i', 'n', 'e', '3', 0};
    for (const double number : {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}) {
        std::array<unsigned char, 8> bytes;
        std::memcpy(bytes.data(), &number, sizeof number);
        expected.insert(expected.end(), bytes.begin(), bytes.end());
    }
    EXPECT_EQ(stored(line()), expected);
}

TEST(ngk_persistence, stores_an_empty_handle_in_one_byte) {
    EXPECT_EQ(stored(ngkCurvePtr3()), Bytes{0});
    ngkCurvePtr3 curve = line();
    load_bytes(Bytes{0}, [&](CArchive& archive) { archive >> curve; });
    EXPECT_FALSE(curve);
    EXPECT_EQ(stored(ngkCurvePtr2()), Bytes{0});
    EXPECT_EQ(stored(ngkSurfPtr()), Bytes{0});
}

TEST(ngk_persistence, records_a_class_once_in_a_stream) {
    const Bytes bytes =
        stored_bytes([](CArchive& archive) { archive << line() << line() << ngkCurvePtr3(); });
    EXPECT_EQ(bytes.size(), stored(line()).size() + 1 + 2 + 1 + 48 + 1);
    load_bytes(bytes, [](CArchive& archive) {
        ngkCurvePtr3 curve;
        archive >> curve >> curve;
        EXPECT_EQ(stored(curve), stored(line()));
        archive >> curve;
        EXPECT_FALSE(curve);
    });
}

TEST(ngk_persistence, registers_the_classes_by_name) {
    ngk_initialise_persistence();
    ngk_initialise_persistence();
    for (const char* name :
         {"ngkLine3", "ngkLine2", "ngkCurveOnSurf3", "ngkTransformedCurve2", "ngkNurbSurf"}) {
        const CRuntimeClass* const found = CRuntimeClass::FromName(name);
        ASSERT_NE(found, nullptr) << name;
        EXPECT_EQ(found->CreateObject(), nullptr);
    }
    EXPECT_EQ(CRuntimeClass::FromName("ngkCurve3"), nullptr);
}

TEST(ngk_persistence, does_not_store_an_invalid_curve) {
    const ngkCurvePtr3 invalid(new ngkLine3(giPoint3(not_a_number, 0, 0), giPoint3(0, 0, 0)));
    const auto composite = std::make_shared<ngkCompCurve3>(1e-5);
    for (const ngkCurvePtr3& curve :
         {invalid, ngkCurvePtr3(new ngkReverseCurve3(invalid)),
          ngkCurvePtr3(new ngkReverseCurve3(ngkCurvePtr3())),
          ngkCurvePtr3(std::shared_ptr<const ngkCurve3>(composite)),
          ngkCurvePtr3(new HostCurve(giPoint3(0, 0, 0), giPoint3(1, 0, 0)))})
        EXPECT_EQ(cause_of([&] { stored(curve); }), CArchiveException::badSchema);
    EXPECT_EQ(
        cause_of([] { stored(ngkSurfPtr(new ngkSphereSurf(sample_curves::slanted(), -1.0))); }),
        CArchiveException::badSchema);
}

TEST(ngk_persistence, keeps_the_handle_where_loading_fails) {
    ngkCurvePtr3 curve = line();
    const ngkCurvePtr3 before = curve;
    Bytes cut = stored(reversed(line(), 1));
    cut.pop_back();
    EXPECT_EQ(cause_of([&] { load_bytes(cut, [&](CArchive& archive) { archive >> curve; }); }),
              CArchiveException::endOfFile);
    EXPECT_EQ(curve, before);
}

TEST(ngk_persistence, refuses_another_class) {
    const ngkCurvePtr2 in_the_plane(new ngkLine2(giPoint2(1, 2), giPoint2(3, 4)));
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(stored(in_the_plane)), CArchiveException::badClass);
    EXPECT_EQ(cause_of_loading<ngkSurfPtr>(stored(line())), CArchiveException::badClass);
    Bytes unknown = stored(line());
    unknown[14] = '4';
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(unknown), CArchiveException::badClass);
    const StreamClasses classes;
    const Bytes node = stored_bytes([](CArchive& archive) {
        archive << std::uint8_t{1};
        archive.WriteClass(StreamNode::GetThisClass());
    });
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(node), CArchiveException::badClass);
}

TEST(ngk_persistence, refuses_another_version) {
    Bytes bytes = stored(line());
    bytes[3] = 2;
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(bytes), CArchiveException::badSchema);
}

TEST(ngk_persistence, refuses_a_handle_that_is_neither_empty_nor_not) {
    Bytes bytes = stored(line());
    bytes[0] = 2;
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(bytes), CArchiveException::badIndex);
}

TEST(ngk_persistence, refuses_an_empty_handle_within_a_curve) {
    Bytes bytes = stored(reversed(line(), 1));
    // Present, and the record of "ngkReverseCurve3": 1 + 2 + 2 + 2 + 16 bytes.
    bytes[23] = 0;
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(bytes), CArchiveException::badIndex);
}

TEST(ngk_persistence, refuses_a_kind_of_line_that_it_does_not_know) {
    Bytes bytes = stored(line());
    bytes[15] = 3;  // behind the record of "ngkLine3"
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(bytes), CArchiveException::badIndex);
}

TEST(ngk_persistence, refuses_a_composite_whose_curves_do_not_join) {
    const auto composite = std::make_shared<ngkCompCurve3>(1e-5);
    composite->add_segment_end(line());
    composite->add_segment_end(ngkCurvePtr3(new ngkLine3(giPoint3(4, 5, 6), giPoint3(7, 8, 9))));
    Bytes bytes = stored(ngkCurvePtr3(std::shared_ptr<const ngkCurve3>(composite)));
    const double elsewhere = 4.1;
    std::memcpy(bytes.data() + bytes.size() - 48, &elsewhere, sizeof elsewhere);
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(bytes), CArchiveException::badIndex);
}

TEST(ngk_persistence, refuses_a_direction_that_is_not_unit) {
    const ngkCurvePtr3 ray(new ngkLine3(giPoint3(0, 0, 0), giVector3(1, 0, 0), ngkLineKind::half));
    Bytes bytes = stored(ray);
    const double two = 2.0;
    std::memcpy(bytes.data() + 16 + 24, &two, sizeof two);
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(bytes), CArchiveException::badIndex);
}

TEST(ngk_persistence, refuses_axes_of_a_circle_that_are_not_those_of_its_plane) {
    const ngkCurvePtr3 circle(new ngkCircle3(giWorkplane3(), 2.0));
    Bytes bytes = stored(circle);
    // Behind the record of "ngkCircle3" (17 bytes), the plane (9 numbers) and the radius.
    const double length = 2.0001;
    std::memcpy(bytes.data() + 17 + 80, &length, sizeof length);
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(bytes), CArchiveException::badIndex);
}

namespace {

struct ForgedCount {
    const char* name;
    std::function<void(CArchive&)> write;  // behind the class
    const char* class_name;
    CArchiveException::Cause cause = CArchiveException::endOfFile;

    friend std::ostream& operator<<(std::ostream& stream, const ForgedCount& one) {
        return stream << one.name;
    }
};

void write_knots(CArchive& archive, int degree, std::uint32_t count) {
    archive << std::int32_t{degree};
    archive.WriteCount(count);
    for (std::uint32_t i = 0; i < std::min<std::uint32_t>(count, 65536); ++i)
        archive << double(i / 2);
}

class ngk_persistence_count : public testing::TestWithParam<ForgedCount> {};

}  // namespace

TEST_P(ngk_persistence_count, is_not_believed) {
    ngk_initialise_persistence();
    const Bytes bytes = stored_bytes([](CArchive& archive) {
        archive << std::uint8_t{1};
        archive.WriteClass(CRuntimeClass::FromName(GetParam().class_name));
        GetParam().write(archive);
    });
    const bool is_surface = std::string(GetParam().class_name).ends_with("Surf");
    const auto cause =
        is_surface ? cause_of_loading<ngkSurfPtr>(bytes) : cause_of_loading<ngkCurvePtr3>(bytes);
    EXPECT_EQ(cause, GetParam().cause);
}

INSTANTIATE_TEST_SUITE_P(
    forged, ngk_persistence_count,
    testing::ValuesIn(std::vector<ForgedCount>{
        {"of_points_of_a_polyline", [](CArchive& archive) { archive.WriteCount(0xFFFFFFFFU); },
         "ngkPolyline3"},
        {"of_curves_of_a_composite",
         [](CArchive& archive) {
             archive << 1e-5;
             archive.WriteCount(0xFFFFFFFFU);
         },
         "ngkCompCurve3"},
        {"of_curves_of_a_composite_without_any",
         [](CArchive& archive) {
             archive << 1e-5;
             archive.WriteCount(0);
         },
         "ngkCompCurve3", CArchiveException::badIndex},
        {"as_degree_of_a_bezier_curve", [](CArchive& archive) { archive << 0x7FFFFFFF; },
         "ngkBezCurve3", CArchiveException::badIndex},
        {"as_negative_degree", [](CArchive& archive) { archive << -1; }, "ngkBezCurve3",
         CArchiveException::badIndex},
        {"of_knots_of_a_curve", [](CArchive& archive) { write_knots(archive, 2, 0x7FFFFFFFU); },
         "ngkNurbCurve3"},
        {"of_knots_beyond_the_numbers_of_points",
         [](CArchive& archive) { write_knots(archive, 2, 0xFFFFFFFFU); }, "ngkNurbCurve3",
         CArchiveException::badIndex},
        {"of_fewer_knots_than_a_degree_has", [](CArchive& archive) { write_knots(archive, 2, 5); },
         "ngkNurbCurve3", CArchiveException::badIndex},
        {"of_knots_with_fewer_points", [](CArchive& archive) { write_knots(archive, 2, 65536); },
         "ngkNurbCurve3"},
        {"of_points_of_a_surface_that_are_the_product_of_two",
         [](CArchive& archive) {
             write_knots(archive, 2, 65536);
             write_knots(archive, 2, 65536);
         },
         "ngkNurbSurf"}}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(ngk_persistence, nests_as_deep_as_it_says) {
    const ngkCurvePtr3 deepest = reversed(line(), ngk_max_nesting - 1);
    const Bytes bytes = stored(deepest);
    EXPECT_EQ(stored(loaded<ngkCurvePtr3>(bytes)), bytes);
    EXPECT_EQ(cause_of([&] { stored(reversed(deepest, 1)); }), CArchiveException::generic);
}

TEST(ngk_persistence, refuses_what_is_nested_deeper) {
    const Bytes deepest = stored(reversed(line(), ngk_max_nesting - 1));
    // One more handle of the class that came first: behind its record, it has the identifier 1.
    Bytes deeper(deepest.begin(), deepest.begin() + 23);
    const Bytes level = {1, 1, 0x80};
    deeper.insert(deeper.end(), level.begin(), level.end());
    deeper.insert(deeper.end(), deepest.begin() + 23, deepest.end());
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(deeper), CArchiveException::badIndex);
    Bytes endless(deepest.begin(), deepest.begin() + 23);
    for (int i = 0; i < 400000; ++i) endless.insert(endless.end(), level.begin(), level.end());
    EXPECT_EQ(cause_of_loading<ngkCurvePtr3>(endless), CArchiveException::badIndex);
}

TEST(ngk_persistence, counts_the_curve_and_the_surface_below_a_curve_on_a_surface) {
    const ngkSurfPtr plane(new ngkPlaneSurf(giWorkplane3()));
    const auto nested = [&](int times) {
        ngkCurvePtr2 curve(new ngkLine2(giPoint2(0, 0), giPoint2(1, 0)));
        for (; times > 0; --times) curve = ngkCurvePtr2(new ngkReverseCurve2(curve));
        return ngkCurvePtr3(new ngkCurveOnSurf3(curve, plane));
    };
    EXPECT_EQ(cause_of([&] { stored(nested(ngk_max_nesting - 2)); }), CArchiveException::none);
    EXPECT_EQ(cause_of([&] { stored(nested(ngk_max_nesting - 1)); }), CArchiveException::generic);
}

TEST(ngkLine, has_a_unit_direction_however_short_the_one_given) {
    for (const double length : {5e-324, 1e-320, 1e-200, 1e-99, 1.0, 1e99}) {
        const ngkLine3 ray(giPoint3(0, 0, 0), giVector3(length, 0, length), ngkLineKind::half);
        EXPECT_TRUE(ray.is_valid()) << length;
        EXPECT_NEAR(ray.direction().length(), 1.0, 1e-15) << length;
    }
}
