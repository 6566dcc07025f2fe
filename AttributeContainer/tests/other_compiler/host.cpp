// A host from another compiler than the library: what both of them define must be one and the same.
#include <AttributeContainer/AttributeContainer.h>

#include <iostream>
#include <sstream>
#include <string>

using namespace QOR::AttributeContainer;

namespace {

// Read while the static objects of the host are made.
const std::string openedBeforeMain = "Name " + ModelFormat::START_OF_BLOCK_STR + " ";

// Looks at the texts once more when the library's own static objects have gone or are about to.
struct AtTheEnd {
    ~AtTheEnd() {
        if (ModelFormat::END_OF_BLOCK_STR != "}") std::cerr << "a text has gone too early\n";
    }
} atTheEnd;

bool failed = false;

template <class T, class U> void expectEqual(const T& found, const U& wanted, const char* what) {
    if (found == wanted) return;
    failed = true;
    std::cerr << what << ": \"" << found << "\" in place of \"" << wanted << "\"\n";
}

std::string written(Object& object) {
    std::ostringstream text;
    if (object.writeTo(text, std::make_shared<WriteContextBase>())) failed = true;
    return text.str();
}

}  // namespace

int main() {
    expectEqual(openedBeforeMain, "Name { ", "before main");
    expectEqual(ModelFormat::START_OF_BLOCK_STR, "{", "START_OF_BLOCK_STR");
    expectEqual(ModelFormat::END_OF_BLOCK_STR, "}", "END_OF_BLOCK_STR");
    expectEqual(ModelFormat::XML_V2_COMMENT, "<!-- XML v. 2 -->", "XML_V2_COMMENT");
    expectEqual(ModelFormat::XML_FOOTER, "</ZELK>", "XML_FOOTER");
    ValueTypes::forEach([]<class Row>() {
        expectEqual(AttrVal<typename Row::Value>::nullName, "", "nullName");
    });
    expectEqual(version.getFormatVersion()->getReleaseNumbers(), "9.1.0.0", "version");
    expectEqual(getErrorCodeName(ErrorCode::ParseFailed), "ParseFailed", "ErrorCode");

    const auto object = Object::create();
    object->name("Scan");
    const auto text = written(*object);
    expectEqual(text.find("Attr<String> { ") != std::string::npos, true, "a block opens");

    const auto copy = Object::create();
    std::istringstream stream(text);
    if (copy->readFrom(stream, std::make_shared<ReadContextBase>())) failed = true;
    expectEqual(copy->getName(), "Scan", "what was read");
    expectEqual(written(*copy), text, "what is written again");
    return failed ? 1 : 0;
}
