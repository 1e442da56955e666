// config_command: `nmk config show`, `nmk config validate` and `nmk config new`.

#include "commands/config/config_command.h"

#include <absxml/axmDocumentFactory.h>
#include <nmktoolbox/xml/nmkConfXMLWriter.h>

#include <memory>

#include "commands/config/config_options.h"
#include "commands/config/config_report.h"
#include "commands/config/config_search.h"
#include "shell/command_result.h"

namespace nmk_config {

namespace {

class ConfigWriter : public nmkConfXMLWriter {
  public:
    using nmkConfXMLWriter::nmkConfXMLWriter;

    /// The file of the configuration: itself, or that of the version.
    apPath path_of(const ConfigName& name, int version) const {
        if (name.is_file) return apPath(ap_str(utString(name.text)));
        set_conf_file_dir(utString(name.directory));
        apPath path = conf_file_path(utString(name.base), version);
        set_conf_file_dir(utString());
        return path;
    }

    std::shared_ptr<axmDocument> make(const std::string& root) const {
        return create(utString(root));
    }

    nmkConfXMLIOStatus write(std::shared_ptr<axmDocument> document, const apPath& path) const {
        return save(document, path);
    }
};

std::string name_of(const ConfigName& name, const apPath& path) {
    std::string text(nmkConfXMLBase::ut_str(path.path_name().text()).view());
    const bool is_in_current = !name.is_file && name.directory.empty() && text.starts_with("./");
    return is_in_current ? text.substr(2) : text;
}

int make_document(const ConfigOptions& options, std::ostream& out, std::ostream& err) {
    const int version = options.versions->greatest;
    const ConfigWriter writer(version);
    const apPath path = writer.path_of(options.name, version);
    const std::string file = name_of(options.name, path);
    if (path.exists() && !options.force) {
        return nmk_shell::refuse(err, file + ": exists; --force replaces it");
    }
    const std::string root = options.root.empty() ? options.name.base : options.root;
    const auto document = writer.make(root);
    if (document == nullptr) {
        return nmk_shell::refuse(err, "nmk config: the root " + nmk_text::quoted(root) +
                                          "; expected a name of XML (see --root)");
    }
    if (!writer.write(document, path).ok()) {
        return nmk_shell::refuse(err, file +
                                          ": cannot be written; expected a name in a directory "
                                          "that exists and may be written to");
    }
    if (!options.quiet) out << "Wrote " << nmk_text::line_text(file) << ".\n";
    return nmk_shell::finish(out, err, "the name of the file");
}

int report(const ConfigOptions& options, std::ostream& out, std::ostream& err) {
    const auto facts = search(options.name, options.versions);
    if (!facts) return nmk_shell::refuse(err, facts.error().text());
    if (options.json) {
        out << facts_json(*facts, options.versions);
    } else if (!options.quiet) {
        out << (options.action == Action::show ? facts_text(*facts) : verdict_text(*facts));
    }
    const int code = nmk_shell::finish(out, err, "the configuration");
    return code == nmk_shell::done && facts->problem ? nmk_shell::no_result : code;
}

int run_config(const ConfigOptions& options, std::ostream& out, std::ostream& err) {
    axmDocumentFactory::register_service();
    return options.action == Action::make ? make_document(options, out, err)
                                          : report(options, out, err);
}

}  // namespace

nmk_shell::Run declare_config(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<ConfigOptions>(table, declare_config_options, run_config);
}

}  // namespace nmk_config
