#include <apsl/apStringEncodingChooser.h>
#include <nmktoolbox/runtime/nmkProductInfoAbs.h>

#include <utility>

nmkProductInfoAbs::nmkProductInfoAbs()
    : nmkProductInfoAbs(
          utObserverPtr<const apIStringEncoding>(apStringEncodingChooser().ut_encoding())) {}

nmkProductInfoAbs::nmkProductInfoAbs(utObserverPtr<const apIStringEncoding> encoding)
    : m_encoding(std::move(encoding)) {}

nmkProductInfoAbs::~nmkProductInfoAbs() = default;

utServiceName nmkProductInfoAbs::product_info_service_name() {
    return utServiceName("product_info");
}

apString nmkProductInfoAbs::product_line_code_ap() const { return converted(product_line_code()); }

apString nmkProductInfoAbs::product_major_version_string_ap() const {
    return converted(product_major_version_string());
}

apString nmkProductInfoAbs::converted(const utString& text) const {
    const apIStringEncoding* const encoding = m_encoding.get();
    if (text.is_empty() || encoding == nullptr) return apString(L"");
    // Deliberate: the status is not read. A text that cannot be converted exactly is shown with
    // substitutes, which is better than no text.
    int ignored_status = 0;
    return encoding->decode(text, ignored_status);
}
