#include "ScanParts.h"

#include "Adding.h"
#include "Statistics.h"

#include <AttributeContainer/MarkerBase.h>
#include <AttributeContainer/PanoramaPicture.h>
#include <AttributeContainer/ScanProperties.h>
#include <AttributeContainer/TMOReinhard02Field.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numbers>

namespace example {

namespace {

// A container that belongs to the scan without being an object of the tree: a field.
void addProperties(model::Object& object, const Scan& scan, const Distances& distances) {
    const auto properties = model::ScanProperties::create();
    store(*properties, scan, distances);
    if (!object.addField(properties, properties->getName(), 0))
        throw std::logic_error("the properties of the scan cannot be added");
}

void addMarker(model::Object& object, const std::string& name, const Scan& scan,
               std::size_t index) {
    const auto marker = addChild<model::MarkerBase>(object, name);
    marker->id(QOR::uuids::uuid::generate());
    marker->Position(scan.points[index]);
    if (!scan.normals.empty()) marker->normal(scan.normals[index]);
}

// The picture that the distances make, seen from the instrument. The model has no pixels: it tells
// where the host keeps them, and how they are to be shown.
void addPanorama(model::Object& object, const Distances& distances) {
    const auto panorama = addChild<model::PanoramaPicture>(object, "Panorama");
    panorama->ImageRole("Range");
    panorama->HorizontalFOV(kept(2 * std::numbers::pi));  // radians
    panorama->VerticalFOV(kept(std::numbers::pi));

    // A field that the class declares; another class takes the place of the one made with it.
    const auto colours = panorama->PictureColorPropertiesField().lock();
    const auto mapping = model::TMOReinhard02Field::create();
    // At first the range of luminance is empty, so that the first values become its ends.
    mapping->MaximalLuminance(std::max(mapping->MaximalLuminance(), kept(distances.max)));
    mapping->MinimalLuminance(std::min(mapping->MinimalLuminance(), kept(distances.min)));
    mapping->LogarithmicAverage(kept(distances.logarithmicAverage));
    mapping->WhitePoint(kept(distances.max));
    if (!colours ||
        !colours->setField(model::PictureColorPropertiesField::HDRParameterFieldField, mapping))
        throw std::logic_error("the tone mapping cannot be set");
    colours->Event("mapped");
}

}  // namespace

void addScanParts(model::Object& object, const Scan& scan) {
    const Distances distances = measure(scan.points);
    addValue<std::uint64_t>(object, "NumPoints", scan.points.size());
    addValue(object, "Points", scan.points);
    if (!scan.normals.empty()) addValue(object, "Normals", scan.normals);
    addProperties(object, scan, distances);
    addMarker(object, "Nearest", scan, distances.nearest);
    addMarker(object, "Farthest", scan, distances.farthest);
    addPanorama(object, distances);
}

}  // namespace example
