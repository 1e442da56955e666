// axmLoadOptions.h: how a document is read.
#pragma once

/// Whether a document is compared with a schema beside being well-formed. It never is, here.
enum axmValidateMode : int { axm_validate_none = 0 };

class axmLoadOptions {
  public:
    explicit axmLoadOptions(axmValidateMode validate_mode = axm_validate_none) noexcept
        : m_validate_mode(validate_mode) {}

    axmValidateMode validate_mode() const noexcept { return m_validate_mode; }

  private:
    axmValidateMode m_validate_mode;
};
