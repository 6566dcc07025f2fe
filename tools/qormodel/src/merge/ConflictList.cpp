#include "merge/ConflictList.h"

#include "io/TargetBuffer.h"
#include "io/TargetFile.h"
#include "terminal/JsonOutput.h"

#include <unistd.h>

namespace qormodel {

namespace {
Json describeAsJson(const Conflict& conflict) {
    return {{"path", conflict.path}, {"what", conflict.text},     {"base", conflict.base},
            {"ours", conflict.ours}, {"theirs", conflict.theirs}, {"taken", "ours"}};
}
}  // namespace

std::string conflictListOf(const std::string& file) { return file + ".conflicts.json"; }

void storeConflicts(const std::string& file, const std::vector<Conflict>& conflicts) {
    if (conflicts.empty()) {
        ::unlink(conflictListOf(file).c_str());
        return;
    }
    Json list = Json::array();
    for (const auto& conflict : conflicts) list.push_back(describeAsJson(conflict));
    const Json whole{{"version", 1}, {"file", file}, {"conflicts", std::move(list)}};
    const std::string text = whole.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
    TargetFile target(conflictListOf(file));
    TargetBuffer buffer(target.getDescriptor(), conflictListOf(file));
    buffer.sputn(text.data(), static_cast<std::streamsize>(text.size()));
    buffer.finish();
    target.replace(false);
}

std::string describe(const Conflict& conflict) {
    std::string text = conflict.text;
    if (!conflict.base.empty()) text += "; was \"" + conflict.base + '"';
    if (!conflict.ours.empty()) text += "; here \"" + conflict.ours + '"';
    if (!conflict.theirs.empty()) text += "; there \"" + conflict.theirs + '"';
    return text;
}

}  // namespace qormodel
