#include <nmktoolbox/xml/nmkConfXMLReader.h>

#include <algorithm>
#include <limits>

namespace {

constexpr std::string_view white_space = " \t\n\r";

// The whole of the text as an integer; false where it is anything else, or too large.
bool parse_version(const utString& text, int& version) {
    int position = 0;
    int parsed = 0;
    if (text.parse(parsed, position) == 0) return false;
    const std::string_view rest = text.view().substr(static_cast<std::size_t>(position));
    if (rest.find_first_not_of(white_space) != rest.npos) return false;
    version = parsed;
    return true;
}

int one_below(int version) {
    return version > std::numeric_limits<int>::min() ? version - 1
                                                     : std::numeric_limits<int>::max();
}

}  // namespace

nmkConfXMLReader::nmkConfXMLReader(int min_version, int max_version)
    : m_min_version(min_version), m_max_version(max_version) {}

nmkConfXMLReader::~nmkConfXMLReader() = default;

nmkConfXMLIOStatus nmkConfXMLReader::load(const apPath& path,
                                          std::shared_ptr<axmDocument>& document) const {
    if (!path.exists()) return failure(nmkConfXMLFileNotFound, "File not found.");
    const auto factory = xml_factory();
    axmParseError error;
    document = factory == nullptr ? nullptr
                                  : factory->load(path, axmLoadOptions(axm_validate_none), error);
    return document != nullptr ? success() : failure("Not a valid XML file.");
}

nmkConfXMLIOStatus nmkConfXMLReader::load_from_default(
    const utString& base_name, std::shared_ptr<axmDocument>& document) const {
    // Versions of 0 and below share the name without a version, which is loaded last anyway.
    for (int version = m_max_version; version >= std::max(m_min_version, 1); --version) {
        const apPath path = conf_file_path(base_name, version);
        if (path.is_valid() && path.exists()) return load(path, document);
    }
    return load(conf_file_path(base_name, 0), document);
}

nmkConfXMLIOStatus nmkConfXMLReader::load_xml(const utString& text,
                                              std::shared_ptr<axmDocument>& document) const {
    if (text.is_empty()) return failure("Invalid xml content");
    const auto factory = xml_factory();
    axmParseError error;
    document = factory == nullptr
                   ? nullptr
                   : factory->parse(byte_array(text), axmLoadOptions(axm_validate_none), error);
    return document != nullptr ? success() : failure("Unable to load content into document");
}

nmkConfXMLIOStatus nmkConfXMLReader::validate_version(std::shared_ptr<axmNode> node,
                                                      int& version) const {
    version = one_below(m_min_version);
    const utString text = get_attr(node, "version");
    if (text.is_empty()) return failure("Version attribute missing");
    const bool is_in_range =
        parse_version(text, version) && version >= m_min_version && version <= m_max_version;
    return is_in_range ? success() : failure("Incompatible version.");
}

utString nmkConfXMLReader::get_attr(std::shared_ptr<axmNode> node, const utString& name) const {
    return node != nullptr ? ut_str(node->attribute(ap_str(name))) : utString("");
}

bool nmkConfXMLReader::tag_name_matches(std::shared_ptr<axmElement> element,
                                        const utString& name) const {
    // Deliberate: names of elements are case-sensitive in XML, so ap_case_compare has no place
    // here.
    return element != nullptr && ut_str(element->tag()).view() == name.view();
}
