// axmDocumentFactory: reads, creates and saves documents; the service "xml".
//
// What is not well-formed by XML 1.0 (fifth edition) is refused with line and column. UTF-8,
// UTF-16, ISO-8859-1 and US-ASCII are read, UTF-8 is written. A document type is refused, so a
// document has no entities of its own, and nothing outside the document is ever read. Names are
// compared as they are, prefix and colon included. Comments and processing instructions are kept.
//
// Time and memory grow with the size of the document only, whatever its depth. Nothing throws.
#pragma once

#include <absxml/axmDocument.h>
#include <absxml/axmLoadOptions.h>
#include <absxml/axmParseError.h>
#include <apsl/apByteArray.h>
#include <apsl/apPath.h>
#include <utils/utService.h>

#include <cstddef>
#include <memory>

class UT_EXPORT axmDocumentFactory : public utService {
  public:
    /// Bytes of the longest document that is read; a longer file is refused before it is read.
    static constexpr std::size_t max_document_size = std::size_t{1} << 30U;

    axmDocumentFactory() = default;
    ~axmDocumentFactory() override;

    /// Registers a factory as the service "xml", in place of any other. It lasts as long as the
    /// process.
    static void register_service();

    /// The document in the file; null with the reason in `error`. Only a regular file is read, so
    /// that a pipe or a device cannot block the caller.
    virtual std::shared_ptr<axmDocument> load(const apPath& path, const axmLoadOptions& options,
                                              axmParseError& error) const;

    /// The document in the bytes; null with the reason in `error`.
    virtual std::shared_ptr<axmDocument> parse(const apByteArray& bytes,
                                               const axmLoadOptions& options,
                                               axmParseError& error) const;

    /// A new document with an empty root element; null where `root_name` is not a name of XML.
    virtual std::shared_ptr<axmDocument> create(const apString& root_name) const;

    /// Writes the document to a file, which has its old content until the new one is complete. A
    /// document without text beside its elements is indented by two spaces for each level.
    ///
    ///   returns  false where the file cannot be written, which is then as it was; also for what
    ///            exists and is not a regular file
    virtual bool save(const axmDocument& document, const apPath& path) const;
};
