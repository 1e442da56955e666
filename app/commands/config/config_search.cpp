// config_search: the document that a configuration is read from, and what there is to say of it.

#include "commands/config/config_search.h"

#include <nmktoolbox/xml/nmkConfXMLReader.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <limits>
#include <memory>
#include <string_view>
#include <system_error>

#include "files/read_whole_file.h"
#include "text/escaped_text.h"

namespace nmk_config {

namespace {

constexpr int any_version = std::numeric_limits<int>::max();  // the greatest without a range

std::string range_text(VersionRange versions) {
    return std::to_string(versions.least) + " to " + std::to_string(versions.greatest);
}

std::string text_of(const apString& text) {
    return std::string(nmkConfXMLBase::ut_str(text).view());
}

apPath path_of(const std::string& name) { return apPath(nmkConfXMLBase::ap_str(utString(name))); }

// Reads as the service "xml" does, and keeps what the library drops: the file and the error.
class RecordingFactory : public axmDocumentFactory {
  public:
    explicit RecordingFactory(std::shared_ptr<axmDocumentFactory> factory)
        : m_factory(std::move(factory)) {}

    std::shared_ptr<axmDocument> load(const apPath& path, const axmLoadOptions& options,
                                      axmParseError& error) const override {
        auto document = m_factory->load(path, options, error);
        m_error = error;
        return document;
    }
    std::shared_ptr<axmDocument> parse(const apByteArray& bytes, const axmLoadOptions& options,
                                       axmParseError& error) const override {
        auto document = m_factory->parse(bytes, options, error);
        m_error = error;
        return document;
    }

    const axmParseError& error() const { return m_error; }

  private:
    std::shared_ptr<axmDocumentFactory> m_factory;
    mutable axmParseError m_error;
};

// The directory of the configuration, for the time of a search.
class ScopedDirectory {
  public:
    explicit ScopedDirectory(const std::string& directory) {
        nmkConfXMLBase::set_conf_file_dir(utString(directory));
    }
    ~ScopedDirectory() { nmkConfXMLBase::set_conf_file_dir(utString()); }
    ScopedDirectory(const ScopedDirectory&) = delete;
    ScopedDirectory& operator=(const ScopedDirectory&) = delete;
};

class ConfigReader : public nmkConfXMLReader {
  public:
    explicit ConfigReader(VersionRange versions)
        : nmkConfXMLReader(versions.least, versions.greatest),
          m_versions(versions),
          m_factory(std::make_shared<RecordingFactory>(nmkConfXMLReader::xml_factory())) {}

    std::shared_ptr<axmDocumentFactory> xml_factory() const override { return m_factory; }

    void read_newest(const std::string& base, ConfigFacts& facts) const {
        std::shared_ptr<axmDocument> document;
        add(load_from_default(utString(base), document), document, facts);
    }
    void read_file(ConfigFacts& facts) const {
        std::shared_ptr<axmDocument> document;
        add(load(path_of(facts.file), document), document, facts);
    }
    void read_text(const std::string& text, ConfigFacts& facts) const {
        std::shared_ptr<axmDocument> document;
        add(load_xml(utString(text), document), document, facts);
    }

  private:
    void add(const nmkConfXMLIOStatus& status, const std::shared_ptr<axmDocument>& document,
             ConfigFacts& facts) const {
        if (!status.ok()) {
            facts.problem = problem_of(status);
            return;
        }
        const auto root = document->root_element();
        facts.root = text_of(root->tag());
        int version = 0;
        const auto validity = validate_version(root, version);
        const bool is_there = !get_attr(root, "version").is_empty();
        const bool is_read = validity.ok() || version != one_below_least();
        if (is_there && is_read) facts.version = version;
        if (!validity.ok()) {
            facts.problem = {document->root_line_number(), document->root_column_number(),
                             message_of(validity, get_attr(root, "version"))};
        }
    }

    // The message of the library, with what was found and what was expected.
    std::string message_of(const nmkConfXMLIOStatus& validity, const utString& version) const {
        std::string message(validity.message().view());
        if (version.is_empty()) return message;
        return message + " It is " + nmk_text::quoted(version.view()) + "; expected " +
               (m_versions.greatest == any_version ? "a whole number from 0 up"
                                                   : range_text(m_versions));
    }

    DocumentProblem problem_of(const nmkConfXMLIOStatus& status) const {
        const std::string message(status.message().view());
        if (m_factory->error().message().is_empty()) return {0, 0, message};
        const axmParseError& error = m_factory->error();
        return {error.line_number(), error.column_number(), text_of(error.message())};
    }

    // What validate_version reports where the attribute is not a number.
    int one_below_least() const {
        int version = 0;
        validate_version(nullptr, version);
        return version;
    }

    VersionRange m_versions;
    std::shared_ptr<RecordingFactory> m_factory;
};

// The version in a file's name: base, ".", at least two digits, ".xml".
std::optional<int> version_in(std::string_view file, std::string_view base) {
    constexpr std::string_view extension = ".xml";
    if (!file.starts_with(base) || !file.ends_with(extension)) return std::nullopt;
    if (file.size() < base.size() + extension.size() + 3) return std::nullopt;
    file.remove_prefix(base.size());
    file.remove_suffix(extension.size());
    int version = 0;
    const auto [end, error] = std::from_chars(file.data() + 1, file.data() + file.size(), version);
    const bool is_version = file[0] == '.' && file[1] != '-' && error == std::errc() &&
                            end == file.data() + file.size() && version > 0;
    const bool is_usual =
        is_version && (version < 10 ? file.size() == 3 && file[1] == '0' : file[1] != '0');
    return is_usual ? std::optional(version) : std::nullopt;
}

// The files of the configuration, from the newest down.
std::vector<OtherFile> files_of(const ConfigName& name) {
    std::vector<OtherFile> files;
    std::error_code error;
    const std::string directory = name.directory.empty() ? "." : name.directory;
    const auto options = std::filesystem::directory_options::skip_permission_denied;
    for (std::filesystem::directory_iterator entry(directory, options, error), end;
         !error && entry != end; entry.increment(error)) {
        const std::string file = entry->path().filename().string();
        if (file == name.base + ".xml") files.push_back({name.directory + file, 0, {}});
        const auto version = version_in(file, name.base);
        if (version) files.push_back({name.directory + file, *version, {}});
    }
    std::ranges::sort(files, std::ranges::greater(), &OtherFile::version);
    return files;
}

bool is_in(VersionRange versions, const OtherFile& file) {
    return file.version > 0 && file.version >= versions.least && file.version <= versions.greatest;
}

std::string reason_for_not(VersionRange versions, const OtherFile& file) {
    if (file.version == 0) return "only where there is no other file";
    if (file.version > versions.greatest) return "newer than the versions";
    return file.version < versions.least ? "older than the versions" : "older than the chosen one";
}

// Sets the file that the library will choose, and why the others are not chosen.
void choose(const ConfigName& name, VersionRange versions, ConfigFacts& facts) {
    facts.others = files_of(name);
    const auto newest = std::ranges::find_if(
        facts.others, [&](const OtherFile& file) { return is_in(versions, file); });
    const bool is_there = newest != facts.others.end();
    facts.file = is_there ? newest->file : name.directory + name.base + ".xml";
    facts.reason = is_there ? "the newest file of versions " + range_text(versions)
                            : "there is no file of versions " + range_text(versions);
    std::erase_if(facts.others, [&](const OtherFile& file) { return file.file == facts.file; });
    for (OtherFile& file : facts.others) file.reason = reason_for_not(versions, file);
}

}  // namespace

nmk_text::Result<ConfigFacts> search(const ConfigName& name,
                                     const std::optional<VersionRange>& versions) {
    constexpr VersionRange all{0, any_version};
    const ConfigReader reader(versions.value_or(all));
    ConfigFacts facts;
    if (!name.is_file) {
        choose(name, *versions, facts);
        const ScopedDirectory directory(name.directory);
        reader.read_newest(name.base, facts);
        return facts;
    }
    facts.file = nmk_files::input_name(name.text);
    facts.reason = "named on the command line";
    if (name.text != nmk_files::standard_stream) {
        reader.read_file(facts);
        return facts;
    }
    // A document need not have lines of text: UTF-16, or all in one line.
    const auto text = nmk_files::read_standard_input_bytes();
    if (!text) return text.error();
    reader.read_text(*text, facts);
    return facts;
}

}  // namespace nmk_config
