#include <nmknmt/nmkNMTFileMFC.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <nmktoolbox/runtime/nmkClipboardAbs.h>
#include <nmktoolbox/trifile/nmkNMTFileMaker.h>

namespace {

std::unique_ptr<nmkNMTFile> clipboard_file() {
    auto* const clipboard = utService::get_instance().locate_service<nmkClipboardAbs>(
        utServiceName("clipboard"), utServiceName());
    if (clipboard == nullptr) return nullptr;
    return std::make_unique<nmkNMTFileMFC>(clipboard->get_data("nmt"));
}

}  // namespace

nmkNMTFileMaker::~nmkNMTFileMaker() = default;

std::unique_ptr<nmkNMTFile> nmkNMTFileMaker::create_nmt_file() {
    if (m_filename != nullptr && nmkFileDir(m_filename, nullptr).basename().is_empty()) {
        m_filename = nullptr;
    }
    return m_filename != nullptr ? create_basic_nmt_file() : clipboard_file();
}

std::unique_ptr<nmkNMTFile> nmkNMTFileMaker::create_basic_nmt_file() {
    return std::make_unique<nmkNMTFileMFC>(utString(m_filename), apNMKModeRead);
}
