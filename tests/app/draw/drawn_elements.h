// drawn_elements.h: the elements of an SVG drawing, with what they have from the groups around
// them.
#pragma once

#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "draw/svg_document.h"

namespace nmk_draw {

struct DrawnElement {
    std::string name;  // "line"
    std::map<std::string, std::string> attributes;
    std::string text;                 // up to the next tag
    std::vector<std::string> within;  // the classes of the groups around it, and its own
    std::string tool;                 // its data-tool, or that of a group around it
    SvgPoint origin;                  // its point (0, 0) in the drawing

    double number(const std::string& attribute) const {
        const auto found = attributes.find(attribute);
        return found == attributes.end() ? 0.0 : std::strtod(found->second.c_str(), nullptr);
    }
    std::string value(const std::string& attribute) const {
        const auto found = attributes.find(attribute);
        return found == attributes.end() ? "" : found->second;
    }
    SvgPoint at(const std::string& x, const std::string& y) const {
        return {origin.x + number(x), origin.y + number(y)};
    }
    bool is_in(const std::string& name_of_class) const {
        for (const std::string& other : within) {
            if (other == name_of_class) return true;
        }
        return false;
    }
};

namespace drawn {

/// The attributes of a tag `<name a="b" ...`.
inline std::map<std::string, std::string> attributes_of(std::string_view tag) {
    std::map<std::string, std::string> attributes;
    for (std::size_t at = tag.find(' '); at != tag.npos;) {
        const std::size_t equals = tag.find("=\"", at);
        if (equals == tag.npos) break;
        const std::size_t end = tag.find('"', equals + 2);
        attributes[std::string(tag.substr(at + 1, equals - at - 1))] =
            tag.substr(equals + 2, end - equals - 2);
        at = tag.find(' ', end);
    }
    return attributes;
}

/// What an element inherits.
struct Surroundings {
    std::vector<std::string> within;
    std::string tool;
    SvgPoint origin;
};

inline Surroundings inside(Surroundings around, const DrawnElement& element) {
    const std::string moved = element.value("transform");
    if (moved.starts_with("translate(") && moved.find("scale") == moved.npos) {
        char* end = nullptr;
        around.origin.x += std::strtod(moved.c_str() + 10, &end);
        around.origin.y += std::strtod(end, nullptr);
    }
    if (element.attributes.contains("class")) around.within.push_back(element.value("class"));
    if (element.attributes.contains("data-tool")) around.tool = element.value("data-tool");
    return around;
}

}  // namespace drawn

/// The elements in their order, groups included; translations are followed, scales are not.
inline std::vector<DrawnElement> drawn_elements(std::string_view svg) {
    std::vector<DrawnElement> elements;
    std::vector<drawn::Surroundings> groups(1);
    for (std::size_t at = svg.find('<'); at != svg.npos;) {
        const std::size_t end = svg.find('>', at);
        if (end == svg.npos) break;
        const std::string_view tag = svg.substr(at + 1, end - at - 1);
        const std::size_t next = svg.find('<', end);
        if (tag == "/g") {
            groups.pop_back();
        } else if (!tag.starts_with('/')) {
            DrawnElement element;
            element.name = tag.substr(0, tag.find_first_of(" /"));
            element.attributes = drawn::attributes_of(tag);
            element.text = svg.substr(end + 1, next == svg.npos ? 0 : next - end - 1);
            const drawn::Surroundings around = drawn::inside(groups.back(), element);
            element.within = around.within;
            element.tool = around.tool;
            element.origin = around.origin;
            if (tag.starts_with("g ") || tag == "g") groups.push_back(around);
            elements.push_back(element);
        }
        at = next;
    }
    return elements;
}

/// Those of this name and class; of any class if it is empty.
inline std::vector<DrawnElement> drawn_elements(std::string_view svg, const std::string& name,
                                                const std::string& within) {
    std::vector<DrawnElement> found;
    for (const DrawnElement& element : drawn_elements(svg)) {
        if (element.name == name && (within.empty() || element.is_in(within))) {
            found.push_back(element);
        }
    }
    return found;
}

}  // namespace nmk_draw
