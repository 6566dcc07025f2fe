// Reads any bytes as a whole model stream, and writes what came of it.
#include <AttributeContainer/AttributeContainer.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

namespace ac = QOR::AttributeContainer;

namespace {

std::string write(ac::Object& root) {
    std::ostringstream stream;
    const auto error = root.writeTo(stream, std::make_shared<ac::WriteContextBase>());
    if (error && !error->isWarning()) std::abort();  // whatever was read can be written
    return std::move(stream).str();
}

// A stream that declares its shared instances ahead of the model is read with a dictionary.
void readDictionary(std::istringstream& stream, ac::ReadContextBase& context) {
    ac::SharedInstanceCollection shared;
    if (shared.readFrom(stream, nullptr)) return;
    std::vector<std::uint64_t> keys;
    shared.copyToVector(keys);
    auto dictionary = std::make_unique<ac::ReferenceDictionary>();
    dictionary->initializeFromVector(keys);
    context.setReferenceDictionary(std::move(dictionary));
}

void readModel(const std::string& text, ac::Object& root) {
    std::istringstream stream(text);
    const auto context = std::make_shared<ac::ReadContextBase>();
    {
        ac::ModelInFormat format(stream);
        context->setFormat(format.determineFormat());
        std::string header;
        format.readHeader(header);
        ac::VersionNum version;
        format.readVersion(version);
        format.readZelkStart();
        if (header == "shared") readDictionary(stream, *context);
    }
    const auto error = root.readFrom(stream, context);
    static_cast<void>(error);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto root = ac::Object::create();
    try {
        readModel(std::string(reinterpret_cast<const char*>(data), size), *root);
    } catch (const std::invalid_argument&) {
        // what a malformed number does; the tree read so far stays valid
    }
    write(*root);
    return 0;
}
