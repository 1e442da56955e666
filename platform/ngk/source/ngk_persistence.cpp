#include <ngk/ngk_persistence.h>

#include <deque>

#include "record_kinds.h"

namespace nmk_ngk {

namespace {

class Registrations {
  public:
    Registrations() {
        add<ngkCurve2>();
        add<ngkCurve3>();
        add<ngkSurf>();
    }

  private:
    template <class Base>
    void add() {
        for (const RecordKind<Base>& kind : record_kinds<Base>().kinds)
            m_registrations.emplace_back(&kind.runtime_class);
    }

    std::deque<CRuntimeClassRegistration> m_registrations;  // which are not copied
};

template <class Base>
CArchive& write(CArchive& archive, const coPrf<const Base>& handle) {
    ngk_initialise_persistence();
    write_handle<Base>(archive, handle, 1);
    return archive;
}

template <class Base>
CArchive& read(CArchive& archive, coPrf<const Base>& handle) {
    ngk_initialise_persistence();
    handle = read_handle<Base>(archive, 1);
    return archive;
}

}  // namespace

}  // namespace nmk_ngk

void ngk_initialise_persistence() { static const nmk_ngk::Registrations registrations; }

CArchive& operator<<(CArchive& archive, const ngkCurvePtr3& curve) {
    return nmk_ngk::write<ngkCurve3>(archive, curve);
}
CArchive& operator<<(CArchive& archive, const ngkCurvePtr2& curve) {
    return nmk_ngk::write<ngkCurve2>(archive, curve);
}
CArchive& operator<<(CArchive& archive, const ngkSurfPtr& surface) {
    return nmk_ngk::write<ngkSurf>(archive, surface);
}
CArchive& operator>>(CArchive& archive, ngkCurvePtr3& curve) {
    return nmk_ngk::read<ngkCurve3>(archive, curve);
}
CArchive& operator>>(CArchive& archive, ngkCurvePtr2& curve) {
    return nmk_ngk::read<ngkCurve2>(archive, curve);
}
CArchive& operator>>(CArchive& archive, ngkSurfPtr& surface) {
    return nmk_ngk::read<ngkSurf>(archive, surface);
}
