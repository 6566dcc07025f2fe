#include "model/WrittenCopy.h"

#include "io/TargetBuffer.h"

namespace qormodel {

WrittenCopy::WrittenCopy(const Document& document) {
    TargetBuffer buffer(file.getDescriptor(), "the temporary file");
    writeDocument(document, buffer, document.file);
    buffer.finish();
}

}  // namespace qormodel
