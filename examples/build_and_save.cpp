// Builds a small document from nothing and writes it to standard output.
//
//     build_and_save > hello.fo
#include <iostream>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

/// Makes elements of the XSL-FO namespace below a parent.
class Builder {
public:
    explicit Builder(zro::ZRDocument& document) : m_document(document) {}

    zro::ZRElement& add(zro::ZRNode& parent, const char16_t* name) const {
        const zro::ZRPtr<zro::ZRElement> element = m_document.createElementNS(
            zro::ZRN_ns_fo, zro::ZRN_fo, zro::ZRName(zro::UnicodeString(name)));
        parent.appendChild(element);
        return *element;  // the parent holds it
    }

private:
    zro::ZRDocument& m_document;
};

void addPageMaster(const Builder& builder, zro::ZRElement& root) {
    zro::ZRElement& masters = builder.add(root, u"layout-master-set");
    zro::ZRElement& page = builder.add(masters, u"simple-page-master");
    page.setAttribute(zro::ZRN_master_name, zro::UnicodeString(u"page"));
    page.setAttribute(zro::ZRN_page_width, zro::ZRValue(105.0F, zro::ZRValueUnitMm));
    page.setAttribute(zro::ZRN_page_height, zro::ZRValue(148.0F, zro::ZRValueUnitMm));
    builder.add(page, u"region-body")
        .setAttribute(zro::ZRN_margin, zro::ZRValue(10.0F, zro::ZRValueUnitMm));
}

void addText(const Builder& builder, zro::ZRElement& root, const zro::UnicodeString& text) {
    zro::ZRElement& sequence = builder.add(root, u"page-sequence");
    sequence.setAttribute(zro::ZRN_master_reference, zro::UnicodeString(u"page"));
    zro::ZRElement& flow = builder.add(sequence, u"flow");
    flow.setAttribute(zro::ZRN_flow_name, zro::ZRN_xsl_region_body);
    builder.add(flow, u"block").appendChildText(text);
}

}  // namespace

int main() {
    try {
        const zro::ZRPtr<zro::ZRDocument> document = new zro::ZRDocument;
        const Builder builder(*document);
        zro::ZRElement& root = builder.add(*document, u"root");
        addPageMaster(builder, root);
        addText(builder, root, u"Fish & chips < 5 €");
        document->save(std::cout);
    } catch (const zro::ZRError& error) {
        std::string message;
        std::cerr << error.getMessage().toUTF8String(message) << "\n";
        return 1;
    }
    return 0;
}
