#include "commands/Commands.h"

#include <AttributeContainer/Version.h>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

void addVersion(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("version", "Print the versions of the library");
    command->footer("Example:\n  qormodel version");
    command->callback([&session] {
        session.output.print("qormodel {}\nmodel format {}\n",
                             ac::version.getAppVersion()->getReleaseNumbers(),
                             ac::version.getFormatVersion()->getReleaseNumbers());
    });
}

}  // namespace qormodel
