// nmkProductInfoAbs: facts about the host's product, a service named "product_info".
#pragma once

#include <apsl/apIStringEncoding.h>
#include <nmktoolbox/export.h>
#include <utils/utObserverPtr.h>
#include <utils/utService.h>

class NMKTOOLBOX_EXPORT nmkProductInfoAbs : public utService {
  public:
    /// Texts are converted by the encoding that apStringEncodingChooser returns now.
    nmkProductInfoAbs();

    /// Texts are converted by `encoding`, which is borrowed.
    explicit nmkProductInfoAbs(utObserverPtr<const apIStringEncoding> encoding);
    ~nmkProductInfoAbs() override;

    /// "product_info".
    static utServiceName product_info_service_name();

    /// The code of the product line, and the major version of the product.
    virtual utString product_line_code() const = 0;
    virtual utString product_major_version_string() const = 0;

    /// The same texts, converted. A text without characters gives the empty text, and so does every
    /// text when the encoding is null or has been destroyed.
    apString product_line_code_ap() const;
    apString product_major_version_string_ap() const;

  private:
    apString converted(const utString& text) const;

    utObserverPtr<const apIStringEncoding> m_encoding;
};
