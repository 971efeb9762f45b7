#include "zro/xml/internal/TagScanner.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <tuple>

#include "zro/vocabulary/internal/SharedNames.h"
#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {
namespace {

using Parser = ZRXmlParser;

constexpr std::u16string_view kSvgNamespace = u"http://www.w3.org/2000/svg";
constexpr std::u16string_view kXLinkNamespace = u"http://www.w3.org/1999/xlink";
constexpr std::u16string_view kMathMLNamespace = u"http://www.w3.org/1998/Math/MathML";
constexpr std::u16string_view kChartNamespace = u"http://zro.example.org/names/PlotML";

// Up to here each attribute is compared with each earlier one, above that they are sorted.
constexpr std::size_t kFewAttributes = 16;

const char16_t* skipXmlSpace(const char16_t* at, const char16_t* end) {
    while (at != end && isXmlSpace(*at)) {
        ++at;
    }
    return at;
}

constexpr bool isSameName(const Attribute& left, const Attribute& right) {
    return left.name == right.name && left.namespaceUri == right.namespaceUri;
}

}  // namespace

void TagScanner::readStartTag() {
    m_state.lookahead = Lookahead::None;
    m_state.event = Parser::START_TAG;
    if (m_state.depth() == 0 && m_state.rootSeen) {
        m_state.report(XmlError::SecondRoot);
    }
    const char32_t first = m_state.reader.get();
    m_state.reader.pushBack(first);
    if (isXmlSpace(first)) {
        m_state.report(XmlError::UnexpectedSpace, u"<");
    }
    QName name;
    if (!m_state.names.readQName(name)) {
        m_state.report(XmlError::InvalidStartTagName);
    }
    const ZRLimits& limits = m_state.reader.limits;
    if (limits.elementDepth != 0
        && static_cast<std::uint32_t>(m_state.depth()) >= limits.elementDepth) {
        throw LimitBreach{u"element depth"};
    }
    noteOpenName();
    m_state.namespaces->pushScope();
    m_state.attributes.clear();
    m_state.values.clear();
    readAttributes();
    declareRootConveniences(name.local);
    resolveElement(name);
    noteRoot(name);
    resolveAttributes();
}

void TagScanner::noteOpenName() {
    const auto depth = static_cast<std::size_t>(m_state.depth());
    if (m_openNames.size() <= depth) {
        m_openNames.resize(depth + 1);
    }
    m_openNames[depth] = m_state.names.lastKnown();
}

void TagScanner::readAttributes() {
    CharReader& reader = m_state.reader;
    while (!readPlainAttributes()) {
        const bool spaceSkipped = m_state.names.skipSpace();
        const char32_t c = reader.get();
        if (!spaceSkipped || c == u'>' || c == u'/') {
            return readTagEnd(c);
        }
        reader.pushBack(c);
        readAttribute();
    }
}

// The common case: attributes with known names and values without markup, which lie whole in the
// window. True when that went on to the end of the tag; otherwise the general way goes on from
// behind the last attribute that was read.
bool TagScanner::readPlainAttributes() {
    const Run& run = m_state.reader.run();
    if (!m_state.reader.inWindow()) {
        return false;
    }
    const char16_t* at = run.at;
    for (const char16_t* next = at; next != nullptr; next = readPlainAttribute(at, run.end)) {
        at = next;
        const char16_t* const tagEnd = skipXmlSpace(at, run.end);
        if (run.end - tagEnd >= 2 && tagEnd[0] == u'>') {
            m_state.reader.moveTo(tagEnd + 1);
            return true;
        }
        if (run.end - tagEnd >= 2 && tagEnd[0] == u'/' && tagEnd[1] == u'>') {
            m_state.lookahead = Lookahead::EmptyElementEnd;
            m_state.reader.moveTo(tagEnd + 2);
            return true;
        }
    }
    m_state.reader.moveTo(at);
    return false;
}

// Where the attribute ends, or null when it is not that plain.
const char16_t* TagScanner::readPlainAttribute(const char16_t* at, const char16_t* end) {
    const char16_t* const name = skipXmlSpace(at, end);
    const char16_t* const nameEnd = findQNameEnd(name, end);
    if (name == at || end - nameEnd < 3 || nameEnd[0] != u'='
        || (nameEnd[1] != u'"' && nameEnd[1] != u'\'')) {
        return nullptr;
    }
    const char16_t* const value = nameEnd + 2;
    const char16_t* const valueEnd = findAnyOr<u'&', u'<', u'\n', u'\t'>(value, end, nameEnd[1]);
    if (valueEnd == end || *valueEnd != nameEnd[1]) {
        return nullptr;
    }
    const QName* const known =
        m_state.names.findKnown({name, static_cast<std::size_t>(nameEnd - name)});
    if (known == nullptr) {
        return nullptr;
    }
    const std::size_t valueStart = m_state.values.size();
    m_state.values.appendRun(value, static_cast<std::size_t>(valueEnd - value), end);
    addAttribute(*known, valueStart);
    return valueEnd + 1;
}

void TagScanner::readAttribute() {
    CharReader& reader = m_state.reader;
    QName name;
    if (!m_state.names.readQName(name)) {
        m_state.report(XmlError::InvalidAttributeName);
    }
    m_state.names.skipSpace();
    if (reader.get() != u'=') {
        m_state.report(XmlError::MissingEquals);
    }
    m_state.names.skipSpace();
    const std::size_t valueStart = m_state.values.size();
    m_literals.read(LiteralMode::Attribute, m_state.values);
    addAttribute(name, valueStart);
}

void TagScanner::addAttribute(const QName& name, std::size_t valueStart) {
    Attribute attribute{name.prefix, name.local, ZRN_EMPTY, valueStart,
                        m_state.values.size() - valueStart};
    if (name.prefix == ZRN_xmlns || (name.local == ZRN_xmlns && name.prefix.isEmpty())) {
        const ZRName prefix = name.prefix.isEmpty() ? ZRName() : name.local;
        const ZRName uri = internSharedName(m_state.values.view(valueStart));
        m_state.namespaces->declare(prefix, uri);
        attribute.namespaceUri = ZRN_ns_xmlns;
    }
    m_state.attributes.push_back(attribute);
}

// The end of the tag from its first character on; after an error it counts as ended.
void TagScanner::readTagEnd(char32_t c) {
    if (c == u'>') {
        return;
    }
    if (c != u'/') {
        if (c != CharReader::kEnd && isNameStart(c)) {
            return m_state.report(XmlError::MissingAttributeSpace);
        }
        return m_state.reportCharacter(XmlError::UnexpectedCharacter, c);
    }
    const char32_t last = m_state.reader.get();
    if (isXmlSpace(last)) {
        m_state.report(XmlError::UnexpectedSpace, u"/");
    } else if (last != u'>') {
        m_state.reportCharacter(XmlError::UnexpectedCharacter, last);
    }
    m_state.lookahead = Lookahead::EmptyElementEnd;
}

// Roots that are often written without their namespace. Whether the root has a prefix does not
// matter: the empty prefix is bound all the same.
void TagScanner::declareRootConveniences(ZRName local) {
    if ((local != ZRN_svg && local != ZRN_chart) || m_state.depth() != 1) {
        return;
    }
    NamespaceManager& namespaces = *m_state.namespaces;
    if (namespaces.lookup(ZRName()).isEmpty()) {
        namespaces.declare(ZRName(),
                           internSharedName(local == ZRN_svg ? kSvgNamespace : kChartNamespace));
    }
    if (namespaces.lookup(ZRN_xlink).isEmpty()) {
        namespaces.declare(ZRN_xlink, internSharedName(kXLinkNamespace));
    }
}

void TagScanner::resolveElement(const QName& name) {
    const ZRName uri = m_state.namespaces->lookup(name.prefix);
    if (uri.isEmpty() && !name.prefix.isEmpty()) {
        m_state.report(XmlError::UndeclaredPrefix, name.prefix.toString());
    }
    m_state.namespaces->setElement(name.prefix, uri, name.local);
}

void TagScanner::noteRoot(const QName& name) {
    if (m_state.rootSeen) {
        return;
    }
    m_state.rootSeen = true;
    // On purpose: 92 is the number of "math" among the MathML names but that of another name here,
    // so a real <math> does not add the entities. Document types and `addMathMLEntityMap` do.
    constexpr auto kMathMLRoot = static_cast<ZRNameEnum>(92);
    if (name.local == kMathMLRoot && !m_state.docTypeSeen
        && !m_state.feature(Parser::FEATURE_SKIP_EXTERNAL_SUBSET)
        && viewOf(m_state.namespaces->elementNamespace().toString()) == kMathMLNamespace) {
        m_state.entities.addMathML();
    }
}

// Errors come in the order of the attributes, for each its prefix first; so they are looked for
// before they are reported.
void TagScanner::resolveAttributes() {
    bool isClean = true;
    for (Attribute& attribute : m_state.attributes) {
        if (attribute.prefix != ZRN_EMPTY && attribute.namespaceUri == ZRN_EMPTY) {
            isClean = resolvePrefix(attribute) && isClean;
        }
    }
    findDuplicates();
    if (isClean && m_duplicates.empty()) {
        return;
    }
    auto duplicate = m_duplicates.begin();
    for (std::size_t i = 0; i < m_state.attributes.size(); ++i) {
        const Attribute& attribute = m_state.attributes[i];
        if (attribute.prefix != ZRN_EMPTY && attribute.namespaceUri == ZRN_EMPTY) {
            m_state.report(XmlError::UndeclaredPrefix, ZRName(attribute.prefix).toString());
        }
        if (duplicate != m_duplicates.end() && *duplicate == i) {
            ++duplicate;
            m_state.report(XmlError::DuplicateAttribute,
                           qualifiedName(attribute.prefix, attribute.name));
        }
    }
}

bool TagScanner::resolvePrefix(Attribute& attribute) {
    attribute.namespaceUri = m_state.namespaces->lookup(attribute.prefix);
    if (attribute.namespaceUri == ZRN_EMPTY
        && m_state.feature(Parser::FEATURE_KEEP_UNDECLARED_ATTRIBUTE_PREFIX)) {
        attribute.namespaceUri = attribute.prefix;
    }
    return attribute.namespaceUri != ZRN_EMPTY;
}

// The attributes that have the name of an earlier one, in order.
void TagScanner::findDuplicates() {
    m_duplicates.clear();
    const std::vector<Attribute>& attributes = m_state.attributes;
    if (attributes.size() > kFewAttributes) {
        return findDuplicatesAmongMany();
    }
    for (std::size_t i = 1; i < attributes.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (isSameName(attributes[i], attributes[j])) {
                m_duplicates.push_back(i);
                break;
            }
        }
    }
}

// By sorting, since no choice of names makes that slow.
void TagScanner::findDuplicatesAmongMany() {
    const std::vector<Attribute>& attributes = m_state.attributes;
    m_order.resize(attributes.size());
    std::iota(m_order.begin(), m_order.end(), std::size_t{0});
    std::sort(m_order.begin(), m_order.end(), [&attributes](std::size_t left, std::size_t right) {
        const Attribute& a = attributes[left];
        const Attribute& b = attributes[right];
        return std::tie(a.name, a.namespaceUri, left) < std::tie(b.name, b.namespaceUri, right);
    });
    for (std::size_t i = 1; i < m_order.size(); ++i) {
        if (isSameName(attributes[m_order[i]], attributes[m_order[i - 1]])) {
            m_duplicates.push_back(m_order[i]);
        }
    }
    std::sort(m_duplicates.begin(), m_duplicates.end());
}

// The common case: the text of the start tag's name, and ">" right behind it.
bool TagScanner::readExpectedEndTag() {
    const auto depth = static_cast<std::size_t>(m_state.depth());
    const KnownName* known =
        depth == 0 || depth > m_openNames.size() ? nullptr : m_openNames[depth - 1];
    const NamespaceManager& open = *m_state.namespaces;
    if (known == nullptr || known->name.local != open.elementName()
        || known->name.prefix != open.elementPrefix()) {
        return false;
    }
    const Run& run = m_state.reader.run();
    if (run.end - run.at <= known->length || run.at[known->length] != u'>'
        || !known->isText(run.at)) {
        return false;
    }
    m_state.reader.moveTo(run.at + known->length + 1);
    return true;
}

void TagScanner::readEndTag() {
    m_state.lookahead = Lookahead::None;
    m_state.event = Parser::END_TAG;
    if (readExpectedEndTag()) {
        return;
    }
    const char32_t first = m_state.reader.get();
    m_state.reader.pushBack(first);
    if (isXmlSpace(first)) {
        m_state.report(XmlError::UnexpectedSpace, u"</");
    }
    QName name;
    if (!m_state.names.readQName(name)) {
        m_state.report(XmlError::InvalidEndTagName);
    }
    const NamespaceManager& open = *m_state.namespaces;
    if (name.prefix != open.elementPrefix() || name.local != open.elementName()) {
        m_state.report(XmlError::MismatchedEndTag, qualifiedName(name.prefix, name.local),
                       qualifiedName(open.elementPrefix(), open.elementName()));
    }
    const char32_t last = m_state.reader.get();
    if (last != u'>') {
        m_state.reader.pushBack(last);
        m_state.names.skipSpace();
        m_state.expect(u'>');
    }
}

}  // namespace ZroCommon::internal
