#include "edge_module/version_xml.h"

#include <QString>
#include <QXmlStreamReader>
#include <cstddef>
#include <string>

#include "edges/version_elements.h"

namespace quillmark {
namespace {

/// Steps through a document as version_elements.h wants it.
class XmlSteps {
  public:
    using Text = QString;

    // cppcheck-suppress invalidLifetime ; the reader gets a copy of the bytes
    explicit XmlSteps(std::string_view bytes)
        : xml_(QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()))) {}

    bool atEnd() const { return xml_.atEnd(); }
    bool isBroken() const { return xml_.hasError(); }

    XmlStep next() {
        switch (xml_.readNext()) {
            case QXmlStreamReader::StartElement:
                return XmlStep::StartElement;
            case QXmlStreamReader::EndElement:
                return XmlStep::EndElement;
            case QXmlStreamReader::Characters:
            case QXmlStreamReader::EntityReference:
                return XmlStep::Text;
            default:
                return XmlStep::Other;
        }
    }

    bool isNamed(std::string_view name) const {
        return xml_.name() == QLatin1String(name.data(), static_cast<qsizetype>(name.size()));
    }

    void addText(QString& text) const { text += xml_.text(); }

    static std::string utf8(const QString& text) {
        const QByteArray bytes = text.toUtf8();
        return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
    }

    static std::string folded(const QString& text) { return utf8(text.simplified()); }

  private:
    QXmlStreamReader xml_;
};

}  // namespace

bool parseVersionXml(std::string_view bytes, VersionInfo& info) {
    XmlSteps xml(bytes);
    readVersionElements(xml, info);
    // What follows means nothing to us, but a damaged file is not to be trusted.
    while (!xml.atEnd()) {
        xml.next();
    }
    return !xml.isBroken();
}

}  // namespace quillmark
