// What an independent parser makes of exported documents.
#include <AttributeContainer/XMLSerialization.h>

#include <AttributeContainer/PanoramaPicture.h>
#include <AttributeContainer/ScanProperties.h>

#include "support/Containers.h"
#include "support/Streams.h"
#include "support/Trees.h"
#include "support/ValueSamples.h"

#include <gtest/gtest.h>

#include <QOR/Uuid.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// The document of a container in a file, for a parser that is a program of its own.
class Document {
public:
    explicit Document(AttrContainer& container)
        : file(std::filesystem::temp_directory_path() /
               ("qor-export-" + QOR::uuids::uuid::generate().toString() + ".xml")) {
        std::ofstream stream(file, std::ios::binary);
        EXPECT_EQ(
            codeOf(XMLSerialization::to(stream, container, std::make_shared<WriteContextBase>())),
            std::nullopt);
    }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document() { std::filesystem::remove(file); }

    bool isWellFormed() const {
        return std::system(("xmllint --noout '" + file.string() + "' 2>/dev/null").c_str()) == 0;
    }

    /// What an XPath expression gives, without the line feed that the program adds.
    std::string ask(const std::string& xpath) const {
        const std::string command =
            "xmllint --xpath \"" + xpath + "\" '" + file.string() + "' 2>&1";
        const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
        std::string answer;
        std::array<char, 256> part;
        while (pipe && std::fgets(part.data(), part.size(), pipe.get())) answer += part.data();
        if (answer.ends_with('\n')) answer.pop_back();
        return answer;
    }

private:
    std::filesystem::path file;
};

class XMLSerializationParsed : public testing::Test {
protected:
    void SetUp() override {
#if defined(_WIN32)
        GTEST_SKIP() << "there is no xmllint for this system";
#endif
        ASSERT_EQ(std::system("xmllint --version >/dev/null 2>&1"), 0)
            << "xmllint is missing (Debian: apt-get install libxml2-utils)";
    }
};

}  // namespace

TEST_F(XMLSerializationParsed, IsWellFormedForAPanoramaWithItsFields) {
    const auto panorama = named<PanoramaPicture>("P1");
    panorama->CameraInfo("10\" <wide> & 'bright'");
    panorama->TimeStamp(1700000000.5);

    const Document document(*panorama);

    EXPECT_TRUE(document.isWellFormed());
    EXPECT_EQ(document.ask("string(/Root/@format)"), "0");
    EXPECT_EQ(document.ask("string(/Root/P1/@type)"), "PanoramaPicture");
    EXPECT_EQ(document.ask("string(/Root/P1/attrs/TimeStamp)"), "1700000000.5");
    EXPECT_EQ(document.ask("string(/Root/P1/attrs/CameraInfo)"), R"("10\" <wide> & 'bright'")");
    EXPECT_EQ(document.ask("count(/Root/P1/attrs/*)"), "38");
    EXPECT_EQ(document.ask("string(/Root/P1/fields/PictureColorPropertiesField/fields/"
                           "HDRParameterField/@fieldname)"),
              "HDRParameterField");
}

TEST_F(XMLSerializationParsed, IsWellFormedForValuesOfAllTypes) {
    const auto container = AttrContainer::create();
    container->name("all");
    ValueTypes::forEach([&]<class Row>() {
        using T = typename Row::Value;
        if constexpr (!Row::isAlias) {
            addCustom<T>(*container, "of" + std::to_string(Sample<T>::token), Sample<T>::value());
        }
    });

    const Document document(*container);

    EXPECT_TRUE(document.isWellFormed());
    EXPECT_EQ(document.ask("count(/Root/all/attrs/*)"), "52");  // 51 types, and the name
    ValueTypes::forEach([&]<class Row>() {
        using T = typename Row::Value;
        if constexpr (!Row::isAlias) {
            const std::string element = "/Root/all/attrs/of" + std::to_string(Sample<T>::token);
            EXPECT_EQ("Attr<" + document.ask("string(" + element + "/@type)") + ">",
                      Sample<T>::className);
            EXPECT_EQ(document.ask("string(" + element + ")"), Sample<T>::text);
        }
    });
}

TEST_F(XMLSerializationParsed, IsWellFormedForEveryCharacter) {
    const auto container = AttrContainer::create();
    std::string all;
    for (int character = 1; character < 128; ++character) all += static_cast<char>(character);
    addCustom(*container, "All", all + "\xc3\xa4");

    EXPECT_TRUE(Document(*container).isWellFormed());
}

TEST_F(XMLSerializationParsed, IsNotWellFormedWhereXmlDoesNotAllowAName) {
    const auto container = AttrContainer::create();
    addCustom(*container, "2nd", 1);

    EXPECT_FALSE(Document(*container).isWellFormed());
}
