#include "commands/Commands.h"

#include <AttributeContainer/Version.h>

#include <string>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

namespace {
std::string versionText() {
    return "qormodel " + ac::version.getAppVersion()->getReleaseNumbers() + "\nmodel format " +
           ac::version.getFormatVersion()->getReleaseNumbers() + '\n';
}
}  // namespace

void addVersion(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("version", "Print the versions of the library");
    command->footer("Example:\n  qormodel version");
    command->callback([&session] { session.output.add(versionText()); });
    // The parser ends the text with a line feed of its own.
    const auto text = [] { return versionText().substr(0, versionText().size() - 1); };
    program.set_version_flag("--version", text, "Print the versions of the library");
}

}  // namespace qormodel
