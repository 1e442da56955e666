// conf_documents.h: a reader and a writer with their operations public, and files to read.
#pragma once

#include <gtest/gtest.h>
#include <nmktoolbox/xml.h>

#include <memory>
#include <string>
#include <vector>

#include "scratch_directory.h"

struct PublicReader : nmkConfXMLReader {
    using nmkConfXMLReader::get_attr;
    using nmkConfXMLReader::load;
    using nmkConfXMLReader::load_from_default;
    using nmkConfXMLReader::load_xml;
    using nmkConfXMLReader::nmkConfXMLReader;
    using nmkConfXMLReader::tag_name_matches;
    using nmkConfXMLReader::validate_version;
};

struct PublicWriter : nmkConfXMLWriter {
    using nmkConfXMLWriter::add_content;
    using nmkConfXMLWriter::add_element;
    using nmkConfXMLWriter::create;
    using nmkConfXMLWriter::nmkConfXMLWriter;
    using nmkConfXMLWriter::save;
};

/// A directory for configuration documents, and the service "xml".
class ConfTest : public testing::Test {
  protected:
    ConfTest() {
        axmDocumentFactory::register_service();
        nmkConfXMLBase::set_conf_file_dir(utString(scratch.path()));
    }
    ~ConfTest() override {
        nmkConfXMLBase::set_conf_file_dir(utString());
        utService::get_instance().register_service(utServiceName("xml"), nullptr);
    }

    /// Makes a document with the version of its name.
    void make(const std::string& name, const std::string& version) const {
        scratch.file(name, "<conf version='" + version + "'/>");
    }

    static void remove_service() {
        utService::get_instance().register_service(utServiceName("xml"), nullptr);
    }

    apPath path_of(const std::string& name) const {
        return apPath(nmkConfXMLBase::ap_str(utString(scratch.path() + "/" + name)));
    }

    ScratchDirectory scratch;
    std::shared_ptr<axmDocument> document;
};

/// The text of a status: "ok", or its kind and message.
inline std::string text_of(const nmkConfXMLIOStatus& status) {
    if (status.ok()) return "ok";
    return std::to_string(status.failure()) + " " + std::string(status.message().view());
}
