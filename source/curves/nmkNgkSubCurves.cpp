#include <ngk/ngkCompCurve.h>
#include <ngk/ngkCurveOnSurf3.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkNurbCurve.h>
#include <ngk/ngkPolyline.h>
#include <ngk/ngkReverseCurve.h>
#include <ngk/ngkTransformedCurve.h>
#include <nmktoolbox/curves/nmkNgkSubCurves.h>

namespace {

template <int Dimension>
using Pieces = std::vector<coPrf<const ngkCurve<Dimension>>>;

// Deliberate: the pieces keep the order that they have inside, also those of a reversed curve.
template <int Dimension>
Pieces<Dimension> reversed(Pieces<Dimension> pieces) {
    for (auto& piece : pieces)
        piece = coPrf<const ngkCurve<Dimension>>(new ngkReverseCurve<Dimension>(piece));
    return pieces;
}

template <int Dimension>
Pieces<Dimension> transformed(Pieces<Dimension> pieces,
                              const typename ngkSpace<Dimension>::Xform& xform) {
    for (auto& piece : pieces)
        piece = coPrf<const ngkCurve<Dimension>>(new ngkTransformedCurve<Dimension>(piece, xform));
    return pieces;
}

template <int Dimension>
Pieces<Dimension> pieces_of_each(const ngkCompCurve<Dimension>& composite) {
    Pieces<Dimension> pieces;
    for (int i = 0; i < composite.curve_count(); ++i) {
        const Pieces<Dimension> inside = nmkNgkSubCurves::sub_curves(composite.curve(i));
        pieces.insert(pieces.end(), inside.begin(), inside.end());
    }
    return pieces;
}

template <int Dimension>
Pieces<Dimension> lines_of(const ngkPolyline<Dimension>& polyline) {
    Pieces<Dimension> lines;
    for (int i = 1; i < polyline.point_count(); ++i)
        lines.emplace_back(new ngkLine<Dimension>(polyline.point(i - 1), polyline.point(i)));
    return lines;
}

}  // namespace

std::vector<ngkCurvePtr3> nmkNgkSubCurves::sub_curves(const ngkCurvePtr3& curve) {
    const ngkCurve3* const any = curve.get();
    if (any == nullptr) return {};
    if (const auto* kind = dynamic_cast<const ngkReverseCurve3*>(any)) return sub_curves(*kind);
    if (const auto* kind = dynamic_cast<const ngkTransformedCurve3*>(any)) return sub_curves(*kind);
    if (const auto* kind = dynamic_cast<const ngkCompCurve3*>(any)) return sub_curves(*kind);
    if (const auto* kind = dynamic_cast<const ngkCurveOnSurf3*>(any)) return sub_curves(*kind);
    // Deliberate: a polyline in space stays whole, unlike one in the plane.
    return {curve};
}

std::vector<ngkCurvePtr2> nmkNgkSubCurves::sub_curves(const ngkCurvePtr2& curve) {
    const ngkCurve2* const any = curve.get();
    if (any == nullptr) return {};
    if (const auto* kind = dynamic_cast<const ngkReverseCurve2*>(any)) return sub_curves(*kind);
    if (const auto* kind = dynamic_cast<const ngkTransformedCurve2*>(any)) return sub_curves(*kind);
    if (const auto* kind = dynamic_cast<const ngkCompCurve2*>(any)) return sub_curves(*kind);
    if (const auto* kind = dynamic_cast<const ngkPolyline2*>(any)) return sub_curves(*kind);
    if (const auto* kind = dynamic_cast<const ngkNurbCurve2*>(any)) return sub_curves(*kind);
    return {curve};
}

std::vector<ngkCurvePtr3> nmkNgkSubCurves::sub_curves(const ngkReverseCurve3& curve) {
    return reversed<3>(sub_curves(curve.curve()));
}

std::vector<ngkCurvePtr3> nmkNgkSubCurves::sub_curves(const ngkTransformedCurve3& curve) {
    return transformed<3>(sub_curves(curve.curve()), curve.xform());
}

std::vector<ngkCurvePtr3> nmkNgkSubCurves::sub_curves(const ngkCompCurve3& curve) {
    return pieces_of_each(curve);
}

std::vector<ngkCurvePtr3> nmkNgkSubCurves::sub_curves(const ngkCurveOnSurf3& curve) {
    std::vector<ngkCurvePtr3> pieces;
    for (const ngkCurvePtr2& piece : sub_curves(curve.curve()))
        pieces.emplace_back(new ngkCurveOnSurf3(piece, curve.surface()));
    return pieces;
}

std::vector<ngkCurvePtr3> nmkNgkSubCurves::sub_curves(const ngkPolyline3& curve) {
    return lines_of(curve);
}

std::vector<ngkCurvePtr2> nmkNgkSubCurves::sub_curves(const ngkReverseCurve2& curve) {
    return reversed<2>(sub_curves(curve.curve()));
}

std::vector<ngkCurvePtr2> nmkNgkSubCurves::sub_curves(const ngkTransformedCurve2& curve) {
    return transformed<2>(sub_curves(curve.curve()), curve.xform());
}

std::vector<ngkCurvePtr2> nmkNgkSubCurves::sub_curves(const ngkCompCurve2& curve) {
    return pieces_of_each(curve);
}

std::vector<ngkCurvePtr2> nmkNgkSubCurves::sub_curves(const ngkPolyline2& curve) {
    return lines_of(curve);
}

std::vector<ngkCurvePtr2> nmkNgkSubCurves::sub_curves(const ngkNurbCurve2& curve) {
    std::vector<ngkCurvePtr2> pieces;
    for (const auto& bezier : curve.bezier_curves()) pieces.emplace_back(bezier);
    return pieces;
}
