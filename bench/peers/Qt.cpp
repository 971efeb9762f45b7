// Qt's stream reader on a device, and its stream writer.

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QString>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <memory>
#include <optional>
#include <stdexcept>

#include "bench/peers/Contenders.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

QByteArray view(std::string_view bytes) {
    return QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size()));
}

QString wide(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

void takeElement(const QXmlStreamReader& reader, Tally& tally) {
    ++tally.elements;
    keep(reader.name().data());
    keep(reader.namespaceUri().data());
    const QXmlStreamAttributes attributes = reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes) {
        ++tally.attributes;
        keep(attribute.name().data());
        keep(attribute.namespaceUri().data());
        tally.units += static_cast<std::uint64_t>(attribute.value().size());
    }
    const QXmlStreamNamespaceDeclarations declarations = reader.namespaceDeclarations();
    for (const QXmlStreamNamespaceDeclaration& declaration : declarations) {
        ++tally.attributes;
        tally.units += static_cast<std::uint64_t>(declaration.namespaceUri().size());
    }
}

Tally runReader(std::string_view document) {
    QByteArray bytes = view(document);
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&device);
    Tally tally;
    int depth = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            takeElement(reader, tally);
            break;
        case QXmlStreamReader::EndElement: --depth; break;
        case QXmlStreamReader::Characters:
            if (depth > 0) {  // line ends around the root element come as text here
                tally.units += static_cast<std::uint64_t>(reader.text().size());
            }
            break;
        default: break;
        }
    }
    if (reader.hasError()) {
        throw std::runtime_error(reader.errorString().toStdString());
    }
    return tally;
}

struct WideEvent {
    WriteEvent::Kind kind;
    QString namespaceUri;
    QString name;
    QString value;
    bool isDeclaration;
};

WideEvent widened(const WriteEvent& event) {
    const bool isDefault = event.prefix.empty() && event.name == "xmlns";
    const bool isDeclaration =
        event.kind == WriteEvent::Kind::Attribute && (event.prefix == "xmlns" || isDefault);
    return {event.kind, wide(event.namespaceUri), isDefault ? QString() : wide(event.name),
            wide(event.value), isDeclaration};
}

void write(QXmlStreamWriter& writer, const WideEvent& event) {
    switch (event.kind) {
    case WriteEvent::Kind::Start: writer.writeStartElement(event.namespaceUri, event.name); break;
    case WriteEvent::Kind::Attribute:
        if (event.isDeclaration) {
            writer.writeNamespace(event.value, event.name);
        } else {
            writer.writeAttribute(event.namespaceUri, event.name, event.value);
        }
        break;
    case WriteEvent::Kind::Text: writer.writeCharacters(event.value); break;
    case WriteEvent::Kind::End: writer.writeEndElement(); break;
    }
}

// This writer wants an element's declarations before the element.
std::vector<WideEvent> inQtOrder(const std::vector<WriteEvent>& events) {
    std::vector<WideEvent> result;
    std::size_t start = 0;
    for (const WriteEvent& event : events) {
        WideEvent wideEvent = widened(event);
        if (event.kind == WriteEvent::Kind::Start) {
            start = result.size();
        }
        if (wideEvent.isDeclaration) {
            result.insert(result.begin() + static_cast<std::ptrdiff_t>(start++),
                          std::move(wideEvent));
        } else {
            result.push_back(std::move(wideEvent));
        }
    }
    return result;
}

std::function<std::size_t()> prepareWriter(const std::vector<WriteEvent>& events) {
    auto target = std::make_shared<QByteArray>();
    return [target, own = inQtOrder(events)] {
        target->resize(0);
        QBuffer device(target.get());
        device.open(QIODevice::WriteOnly);
        QXmlStreamWriter writer(&device);
        writer.writeStartDocument();
        for (const WideEvent& event : own) {
            write(writer, event);
        }
        writer.writeEndDocument();
        return static_cast<std::size_t>(target->size());
    };
}

template <class Device>
std::function<void()> firstFrom(std::shared_ptr<Device> device) {
    device->open(QIODevice::ReadOnly);
    auto reader = std::make_shared<std::optional<QXmlStreamReader>>();
    return [device, reader] {
        reader->emplace(device.get()).readNextStartElement();
    };
}

std::function<void()> firstInMemory(const FirstInput& input) {
    auto device = std::make_shared<QBuffer>();
    device->setData(view(input.bytes));
    return firstFrom(device);
}

std::function<void()> firstInFile(const FirstInput& input) {
    return firstFrom(std::make_shared<QFile>(wide(input.file)));
}

}  // namespace

void addQt(Contenders& contenders) {
    contenders.pull.push_back({"qt", Form::Utf16, runReader});
    contenders.write.push_back({"qt", prepareWriter});
    contenders.first.push_back({"qt memory", firstInMemory});
    contenders.first.push_back({"qt file", firstInFile});
}

}  // namespace ZroCommon::bench
