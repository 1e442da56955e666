#include <nmktoolbox/serializationexerciser/nmkExpectedByteArray.h>

nmkExpectedByteArray::nmkExpectedByteArray() = default;

nmkExpectedByteArray::nmkExpectedByteArray(const apByteArray& value)
    : m_value(std::make_shared<apByteArray>(value)) {}

nmkExpectedByteArray::nmkExpectedByteArray(const utString& error) : m_error_text(error.view()) {}

utString nmkExpectedByteArray::error() const { return utString(m_error_text); }
