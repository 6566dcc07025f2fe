// W2: pugixml, an element with three attributes for each point.
#include "points/Points.h"
#include "support/XmlText.h"

#include <pugixml.hpp>

#include <string>
#include <utility>
#include <vector>

namespace {

struct Xml {
    template <class P> std::string write(const std::vector<P>& points) {
        pugi::xml_document document;
        auto root = document.append_child("v");
        for (const P& p : points) {
            auto element = root.append_child("p");
            element.append_attribute("x").set_value(p.x);
            element.append_attribute("y").set_value(p.y);
            element.append_attribute("z").set_value(p.z);
        }
        bench::XmlText writer;
        document.save(writer, "", pugi::format_raw | pugi::format_no_declaration);
        return std::move(writer.text);
    }
    template <class P> void read(const std::string& text, std::vector<P>& points) {
        using T = decltype(P::x);
        pugi::xml_document document;
        document.load_buffer(text.data(), text.size());
        points.clear();
        for (const auto element : document.child("v").children("p")) {
            const auto x = element.first_attribute();
            const auto y = x.next_attribute();
            const auto z = y.next_attribute();
            points.push_back({static_cast<T>(x.as_double()), static_cast<T>(y.as_double()),
                              static_cast<T>(z.as_double())});
        }
    }
};

BENCH_PEER("W2", "pugixml", Peer, [](bench::Run& run) { bench::points::runAll<Xml>(run); });

}  // namespace
