// basecoFeature.h: a feature, one kind of data that an object may have beside others.
//
// A feature object refers to data: its own, which it deletes, or those of a coFeaturePool. An
// unbound one refers to none. For a class of data X, coDataFeature<X> does all but two operations:
//
//     class XcoFeature : public coDataFeature<X> {
//       public:
//         basecoFeature* create() const override { return new XcoFeature; }
//         const coFeatureID& get_id() const override;
//     };
#pragma once

#include <ncamcontainer/coFeatureID.h>
#include <utils/utExport.h>

#include <cstdint>

class UT_EXPORT basecoFeature {
  public:
    basecoFeature(const basecoFeature&) = delete;
    basecoFeature& operator=(const basecoFeature&) = delete;

    /// Deletes the data where they are its own.
    virtual ~basecoFeature();

    /// A new unbound feature of the same class, which the caller owns.
    virtual basecoFeature* create() const = 0;

    /// Refers to default-constructed data of its own from now on.
    virtual void make_data() = 0;

    /// Refers to a copy of the data of `other` from now on, or to none where `other` is null,
    /// unbound or of another class.
    virtual void make_copy_data(const basecoFeature* other) = 0;

    /// The number of the class.
    virtual const coFeatureID& get_id() const = 0;

    bool is_bound() const noexcept { return m_data != nullptr; }

    /// Refers to the data of `other`, a feature of the same class, without owning them; null
    /// unbinds.
    void bind(const basecoFeature* other);

  protected:
    basecoFeature() noexcept = default;

    void* m_data = nullptr;
    std::int32_t m_is_owner = 0;
};

/// A feature whose data are an X.
template <class X>
class coDataFeature : public basecoFeature {
  public:
    ~coDataFeature() override { take(nullptr); }

    void make_data() override { take(new X()); }

    void make_copy_data(const basecoFeature* other) override {
        const bool has_data = other != nullptr && other->is_bound() && other->get_id() == get_id();
        take(has_data ? new X(*static_cast<const coDataFeature*>(other)->get()) : nullptr);
    }

    /// The data; null where it is unbound. A feature that was bound to a constant pool must not be
    /// used to change them.
    X* get() const noexcept { return static_cast<X*>(m_data); }
    X& operator*() const noexcept { return *get(); }
    X* operator->() const noexcept { return get(); }

  private:
    void take(X* data) {
        if (m_is_owner != 0) delete get();
        m_data = data;
        m_is_owner = data != nullptr ? 1 : 0;
    }
};
