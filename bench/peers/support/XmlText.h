// What pugixml writes, as a string.
#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <string>

namespace bench {

class XmlText : public pugi::xml_writer {
public:
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text;
};

}  // namespace bench
