#include <nmktoolbox/runtime/nmkClipboardAbs.h>

nmkClipboardAbs::~nmkClipboardAbs() = default;
