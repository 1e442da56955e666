// sample_clipboard.h: a clipboard that holds the bytes of one model, registered as long as it
// lives.
#pragma once

#include <mfc/CMemFile.h>
#include <nmktoolbox/runtime/nmkClipboardAbs.h>

#include <string>
#include <utility>

class SampleClipboard : public nmkClipboardAbs {
  public:
    explicit SampleClipboard(std::string bytes) : m_bytes(std::move(bytes)) {
        utService::get_instance().register_service(utServiceName("clipboard"), this);
    }
    ~SampleClipboard() override {
        utService::get_instance().register_service(utServiceName("clipboard"), nullptr);
    }

    CFilecoPrf get_data(const utString& format) override {
        asked_format = format;
        CFilecoPrf file(new CMemFile);
        file->Write(m_bytes.data(), m_bytes.size());
        return file;
    }
    int put_data(const utString&, const CFilecoPrf&) override { return 0; }
    int has_data(const utString&) override { return 1; }

    utString asked_format;

  private:
    std::string m_bytes;
};
