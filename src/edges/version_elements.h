#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "edges/version_info.h"

namespace quillmark {

/// One step through an XML document.
enum class XmlStep : std::uint8_t { StartElement, EndElement, Text, Other };

// How the version file is read, whoever takes it apart: `Xml` steps through the document.
//
//     bool atEnd()                        behind the last step, or where the document is broken
//     XmlStep next()                      goes on; only while it is not at the end
//     bool isNamed(std::string_view)      whether the element just started has that name
//     Text, void addText(Text&)           a text of any encoding; puts the one just met behind it
//     std::string utf8(Text)              a text in UTF-8 ...
//     std::string folded(Text)            ... with each run of white space made one blank, and none
//                                         at its ends

/// The text of the element just started, with that of elements inside; ends at its end tag. It does
/// not recurse: a damaged file can nest more deeply than the stack goes.
template <typename Xml>
typename Xml::Text elementText(Xml& xml) {
    typename Xml::Text text;
    int depth = 1;
    while (depth > 0 && !xml.atEnd()) {
        switch (xml.next()) {
            case XmlStep::StartElement:
                ++depth;
                break;
            case XmlStep::EndElement:
                --depth;
                break;
            case XmlStep::Text:
                xml.addText(text);
                break;
            case XmlStep::Other:
                break;
        }
    }
    return text;
}

template <typename Xml>
bool readToNextStart(Xml& xml) {
    while (!xml.atEnd()) {
        if (xml.next() == XmlStep::StartElement) {
            return true;
        }
    }
    return false;
}

/// Goes on to the next child of the element around; false at its end.
template <typename Xml>
bool readToNextChild(Xml& xml) {
    while (!xml.atEnd()) {
        switch (xml.next()) {
            case XmlStep::StartElement:
                return true;
            case XmlStep::EndElement:
                return false;
            case XmlStep::Text:
            case XmlStep::Other:
                break;
        }
    }
    return false;
}

inline void replaceTopVersion(std::string& check, std::string_view topVersion) {
    constexpr std::string_view kPlace = "$TopVersion$";
    for (std::size_t at = check.find(kPlace); at != std::string::npos;
         at = check.find(kPlace, at + topVersion.size())) {
        check.replace(at, kPlace.size(), topVersion);
    }
}

template <typename Xml>
VersionRestriction readRestriction(Xml& xml, std::string_view topVersion) {
    VersionRestriction restriction;
    // The elements inside the restriction that are open.
    int depth = 0;
    while (!xml.atEnd() && depth >= 0) {
        const XmlStep step = xml.next();
        if (step == XmlStep::EndElement) {
            --depth;
        } else if (step == XmlStep::StartElement) {
            if (xml.isNamed("Check")) {
                restriction.check = xml.folded(elementText(xml));
                replaceTopVersion(restriction.check, topVersion);
            } else if (xml.isNamed("MessageWarning")) {
                restriction.hasWarning = true;
                restriction.warning = xml.folded(elementText(xml));
            } else {
                ++depth;
            }
        }
    }
    return restriction;
}

/// The parts of a text between blanks, each of at least one byte.
inline std::vector<std::string> splitAtBlanks(std::string_view text) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end > 0) {
            parts.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

/// Reads the three elements that mean something into `info`, which is empty before. They stand in
/// this order, each the next to start after the one before; whatever else starts there takes its
/// place. Elements that are missing leave their part empty.
template <typename Xml>
void readVersionElements(Xml& xml, VersionInfo& info) {
    while (readToNextStart(xml) && !xml.isNamed("TopVersion")) {
    }
    if (xml.atEnd()) {
        return;
    }
    info.topVersion = xml.utf8(elementText(xml));
    if (readToNextStart(xml) && xml.isNamed("VersionList")) {
        info.versions = splitAtBlanks(xml.folded(elementText(xml)));
    }
    if (readToNextStart(xml) && xml.isNamed("Restrictions")) {
        while (readToNextChild(xml)) {
            if (xml.isNamed("VersionRestriction")) {
                info.restrictions.push_back(readRestriction(xml, info.topVersion));
            } else {
                elementText(xml);
            }
        }
    }
}

}  // namespace quillmark
