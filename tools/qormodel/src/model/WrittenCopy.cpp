#include "model/WrittenCopy.h"

#include "io/TargetBuffer.h"

namespace qormodel {

WrittenCopy::WrittenCopy(const Document& document) : file(std::tmpfile(), &std::fclose) {
    if (!file) throw Failure("no temporary file can be made");
    TargetBuffer buffer(::fileno(file.get()), "the temporary file");
    writeDocument(document, buffer, document.file);
    buffer.finish();
}

std::string WrittenCopy::getName() const {
    return "/proc/self/fd/" + std::to_string(::fileno(file.get()));
}

}  // namespace qormodel
