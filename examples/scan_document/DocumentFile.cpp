#include "DocumentFile.h"

#include "ErrorText.h"
#include "MemoryStream.h"

#include <AttributeContainer/Container.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ModelOutFormat.h>
#include <AttributeContainer/ReadContext.h>
#include <AttributeContainer/Version.h>
#include <AttributeContainer/WriteContext.h>

#include <fstream>
#include <istream>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace example {

namespace {
// Stands at the front of our streams; other documents of the same form have other texts there.
const std::string title = "Scan document";
}  // namespace

std::string writeDocument(model::Object& root, std::uint64_t expectedSize) {
    OutputBuffer buffer("writing", expectedSize);
    std::ostream stream(&buffer);
    const auto context = std::make_shared<model::WriteContextBase>();
    model::ModelOutFormat format(stream);
    format.setFormat(context->getFormat());
    format.writeHeader(title, model::version, false);
    if (const auto error = root.writeTo(stream, context)) throw ModelFailure("writing", *error);
    format.writeFooter();
    return buffer.take();
}

std::shared_ptr<model::Object> readDocument(const std::string& text) {
    InputBuffer buffer("reading", text);
    std::istream stream(&buffer);
    const auto context = std::make_shared<model::ReadContextBase>();
    // A stream with a brace too many may have left it to this thread, and it would end this read.
    model::ModelInFormat::cleanPropagateKeyword();
    model::ModelInFormat format(stream);
    context->setFormat(format.determineFormat());
    std::string foundTitle;
    format.readHeader(foundTitle);
    if (foundTitle != title) throw ModelFailure("reading", "this is no scan document");
    model::VersionNum formatVersion;
    format.readVersion(formatVersion);
    if (model::VersionNum::isVersionNumberNewer(*model::version.getFormatVersion(), formatVersion))
        throw ModelFailure("reading", "the document has the format " +
                                          formatVersion.getReleaseNumbers() + ", which is too new");
    const auto root = model::Container::create();  // what a root is, the stream does not say
    try {
        // A warning, too, is a failure here: nothing that this program writes should give one.
        if (const auto error = root->readFrom(stream, context))
            throw ModelFailure("reading", *error);
    } catch (const std::invalid_argument& error) {  // characters that make no number
        throw ModelFailure("reading", error.what());
    }
    return root;
}

void storeText(const std::filesystem::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) throw std::runtime_error(file.string() + ": cannot be written");
}

std::string loadText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    if (!stream || !text) throw std::runtime_error(file.string() + ": cannot be read");
    return std::move(text).str();
}

}  // namespace example
