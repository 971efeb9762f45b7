// libxml2: SAX2 (UTF-8, pointers into its buffers), the text reader, the tree and the text writer.

#include <algorithm>
#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlreader.h>
#include <libxml/xmlwriter.h>
#include <memory>
#include <stdexcept>

#include "bench/peers/Contenders.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

constexpr int kOptions = XML_PARSE_NONET | XML_PARSE_HUGE;

template <auto Free>
struct Deleter {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};
using Reader = std::unique_ptr<xmlTextReader, Deleter<xmlFreeTextReader>>;
using Document = std::unique_ptr<xmlDoc, Deleter<xmlFreeDoc>>;
using Context = std::unique_ptr<xmlParserCtxt, Deleter<xmlFreeParserCtxt>>;
using Buffer = std::unique_ptr<xmlBuffer, Deleter<xmlBufferFree>>;
using Writer = std::unique_ptr<xmlTextWriter, Deleter<xmlFreeTextWriter>>;

std::uint64_t length(const xmlChar* text) {
    return text == nullptr ? 0 : std::strlen(reinterpret_cast<const char*>(text));
}

const xmlChar* chars(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

// A device for what is not read to its end.
int readView(void* context, char* target, int room) {
    auto& rest = *static_cast<std::string_view*>(context);
    const std::size_t count = std::min(rest.size(), static_cast<std::size_t>(room));
    std::memcpy(target, rest.data(), count);
    rest.remove_prefix(count);
    return static_cast<int>(count);
}

// The signature is libxml2's.
// NOLINTNEXTLINE(readability-function-size)
void saxStart(void* user, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* uri,
              int namespaces, const xmlChar** declarations, int attributes, int /*defaulted*/,
              const xmlChar** values) {
    auto& tally = *static_cast<Tally*>(user);
    ++tally.elements;
    keep(name);
    keep(uri);
    for (int index = 0; index < namespaces; ++index) {
        tally.units += length(declarations[2 * index + 1]);
    }
    for (int index = 0; index < attributes; ++index) {
        tally.units += static_cast<std::uint64_t>(values[5 * index + 4] - values[5 * index + 3]);
    }
    tally.attributes += static_cast<std::uint64_t>(namespaces + attributes);
}

void saxText(void* user, const xmlChar* /*text*/, int count) {
    static_cast<Tally*>(user)->units += static_cast<std::uint64_t>(count);
}

Tally runSax(std::string_view document) {
    Tally tally;
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = saxStart;
    handler.characters = saxText;
    handler.ignorableWhitespace = saxText;
    const Context context(xmlNewParserCtxt());
    xmlFree(context->sax);
    context->sax = &handler;
    context->userData = &tally;
    xmlCtxtReadMemory(context.get(), document.data(), static_cast<int>(document.size()), nullptr,
                      nullptr, kOptions);
    const bool isGood = context->wellFormed != 0;
    context->sax = nullptr;
    if (!isGood) {
        throw std::runtime_error("libxml2: not well-formed");
    }
    return tally;
}

void takeAttributes(xmlTextReader* reader, Tally& tally) {
    while (xmlTextReaderMoveToNextAttribute(reader) == 1) {
        ++tally.attributes;
        keep(xmlTextReaderConstLocalName(reader));
        keep(xmlTextReaderConstNamespaceUri(reader));
        tally.units += length(xmlTextReaderConstValue(reader));
    }
}

Tally runReader(std::string_view document) {
    Tally tally;
    const Reader reader(xmlReaderForMemory(document.data(), static_cast<int>(document.size()),
                                           nullptr, nullptr, kOptions));
    int status = 0;
    while ((status = xmlTextReaderRead(reader.get())) == 1) {
        switch (xmlTextReaderNodeType(reader.get())) {
        case XML_READER_TYPE_ELEMENT:
            ++tally.elements;
            keep(xmlTextReaderConstLocalName(reader.get()));
            keep(xmlTextReaderConstNamespaceUri(reader.get()));
            takeAttributes(reader.get(), tally);
            break;
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_CDATA:
        case XML_READER_TYPE_WHITESPACE:
        case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
            tally.units += length(xmlTextReaderConstValue(reader.get()));
            break;
        default: break;
        }
    }
    if (status != 0) {
        throw std::runtime_error("libxml2: reader failed");
    }
    return tally;
}

void takeNode(const xmlNode* node, Tally& tally) {
    if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) {
        tally.units += length(node->content);
        return;
    }
    if (node->type != XML_ELEMENT_NODE) {
        return;
    }
    ++tally.elements;
    keep(node->name);
    for (const xmlNs* declared = node->nsDef; declared != nullptr; declared = declared->next) {
        ++tally.attributes;
        tally.units += length(declared->href);
    }
    for (const xmlAttr* attribute = node->properties; attribute != nullptr;
         attribute = attribute->next) {
        ++tally.attributes;
        keep(attribute->name);
        for (const xmlNode* text = attribute->children; text != nullptr; text = text->next) {
            tally.units += length(text->content);
        }
    }
}

const xmlNode* following(const xmlNode* node, const xmlNode* root) {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        return node->children;
    }
    while (node != root && node->next == nullptr) {
        node = node->parent;
    }
    return node == root ? nullptr : node->next;
}

Tally runTree(std::string_view document, const std::function<void()>& onLoaded) {
    const Document tree(xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr,
                                      nullptr, kOptions | XML_PARSE_COMPACT));
    if (tree == nullptr) {
        throw std::runtime_error("libxml2: tree failed");
    }
    onLoaded();
    Tally tally;
    const xmlNode* root = xmlDocGetRootElement(tree.get());
    for (const xmlNode* node = root; node != nullptr; node = following(node, root)) {
        takeNode(node, tally);
    }
    return tally;
}

void write(xmlTextWriter* writer, const WriteEvent& event) {
    const xmlChar* prefix = event.prefix.empty() ? nullptr : chars(event.prefix);
    switch (event.kind) {
    case WriteEvent::Kind::Start:
        // No URI: the declarations come as attributes, and the writer does not check.
        xmlTextWriterStartElementNS(writer, prefix, chars(event.name), nullptr);
        break;
    case WriteEvent::Kind::Attribute:
        xmlTextWriterWriteAttributeNS(writer, prefix, chars(event.name), nullptr,
                                      chars(event.value));
        break;
    case WriteEvent::Kind::Text: xmlTextWriterWriteString(writer, chars(event.value)); break;
    case WriteEvent::Kind::End: xmlTextWriterEndElement(writer); break;
    }
}

std::function<std::size_t()> prepareWriter(const std::vector<WriteEvent>& events) {
    const std::shared_ptr<xmlBuffer> buffer(xmlBufferCreate(), xmlBufferFree);
    return [buffer, &events] {
        xmlBufferEmpty(buffer.get());
        const Writer writer(xmlNewTextWriterMemory(buffer.get(), 0));
        xmlTextWriterStartDocument(writer.get(), nullptr, "UTF-8", nullptr);
        for (const WriteEvent& event : events) {
            write(writer.get(), event);
        }
        xmlTextWriterEndDocument(writer.get());
        xmlTextWriterFlush(writer.get());
        return static_cast<std::size_t>(xmlBufferLength(buffer.get()));
    };
}

void readToFirst(xmlTextReader* reader) {
    while (xmlTextReaderRead(reader) == 1
           && xmlTextReaderNodeType(reader) != XML_READER_TYPE_ELEMENT) {
    }
}

std::function<void()> firstInMemory(const FirstInput& input) {
    auto rest = std::make_shared<std::string_view>(input.bytes);
    auto reader = std::make_shared<Reader>();
    return [rest, reader] {
        reader->reset(xmlReaderForIO(readView, nullptr, rest.get(), nullptr, nullptr, kOptions));
        readToFirst(reader->get());
    };
}

}  // namespace

void addLibxml(Contenders& contenders) {
    xmlInitParser();
    contenders.pull.push_back({"libxml2-reader", Form::Utf8, runReader});
    contenders.pull.push_back({"libxml2-sax", Form::Utf8, runSax});
    contenders.tree.push_back({"libxml2", Form::Utf8, runTree});
    contenders.write.push_back({"libxml2", prepareWriter});
    contenders.first.push_back({"libxml2-reader memory", firstInMemory});
}

}  // namespace ZroCommon::bench
