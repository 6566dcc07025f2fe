#include "terminal/JsonOutput.h"

namespace qormodel {

void printJson(Output& output, const std::string& command, const Json& content) {
    Json whole{{"version", 1}, {"command", command}};
    whole.update(content);
    // Bytes of a text that are no UTF-8 are replaced: JSON cannot hold them.
    output.add(whole.dump(2, ' ', false, Json::error_handler_t::replace));
    output.add("\n");
}

}  // namespace qormodel
