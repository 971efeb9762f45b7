#include "zro/xml/internal/TagScanner.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <tuple>

#include "zro/vocabulary/internal/SharedNames.h"
#include "zro/xml/internal/Reuse.h"
#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {
namespace {

using Parser = ZRXmlParser;

constexpr std::u16string_view kSvgNamespace = u"http://www.w3.org/2000/svg";
constexpr std::u16string_view kXLinkNamespace = u"http://www.w3.org/1999/xlink";
constexpr std::u16string_view kMathMLNamespace = u"http://www.w3.org/1998/Math/MathML";
constexpr std::u16string_view kChartNamespace = u"http://zro.example.org/names/PlotML";

constexpr std::size_t kFirstDepth = 16;  // room for the names of open elements

// Up to here each attribute is compared with each earlier one, above that they are sorted.
constexpr std::size_t kFewAttributes = 16;

// Mostly one blank, or none.
const char16_t* skipXmlSpace(const char16_t* at, const char16_t* end) {
    while (at != end && *at <= u' ' && isXmlSpace(*at)) {
        ++at;
    }
    return at;
}

constexpr bool isDeclaration(const Attribute& attribute) {
    return attribute.prefix == ZRN_xmlns
           || (attribute.name == ZRN_xmlns && attribute.prefix == ZRN_EMPTY);
}

constexpr bool needsNamespace(const Attribute& attribute) {
    return attribute.prefix != ZRN_EMPTY && attribute.namespaceUri == ZRN_EMPTY;
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
    QName name;
    if (!m_state.names.readKnownQName(name)) {
        readNewName(name);
    }
    const ZRLimits& limits = m_state.reader.limits;
    if (limits.elementDepth != 0
        && static_cast<std::uint32_t>(m_state.depth()) >= limits.elementDepth) {
        throw LimitBreach{u"element depth"};
    }
    noteOpenName();
    m_state.namespaces->pushScope();
    m_state.attributes.clear();
    readAttributes();
    declareRootConveniences(name.local);
    resolveElement(name);
    noteRoot(name);
    resolveAttributes();
}

void TagScanner::readNewName(QName& name) {
    const char32_t first = m_state.reader.get();
    m_state.reader.pushBack(first);
    if (isXmlSpace(first)) {
        m_state.report(XmlError::UnexpectedSpace, u"<");
    }
    if (!m_state.names.readQName(name)) {
        m_state.report(XmlError::InvalidStartTagName);
    }
}

void TagScanner::shrink() {
    clearForReuse(m_openNames);
    clearForReuse(m_duplicates);
    clearForReuse(m_order);
}

void TagScanner::noteOpenName() {
    const auto depth = static_cast<std::size_t>(m_state.depth());
    if (m_openNames.size() <= depth) {
        m_openNames.resize(2 * depth + kFirstDepth);
    }
    m_openNames[depth] = m_state.names.lastKnown();
}

void TagScanner::readAttributes() {
    CharReader& reader = m_state.reader;
    while (!readPlainAttributes()) {
        m_state.attributes.keepValues();
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
    const char16_t* const end = run.end;
    const char16_t* at = run.at;
    KnownName* before = m_state.names.lastKnown();
    for (const char16_t* behind = at; behind != nullptr;) {
        at = behind;
        const char16_t* const next = skipXmlSpace(at, end);
        if (end - next >= 2 && next[0] == u'>') {
            m_state.reader.moveTo(next + 1);
            return true;
        }
        if (end - next >= 2 && next[0] == u'/' && next[1] == u'>') {
            m_state.lookahead = Lookahead::EmptyElementEnd;
            m_state.reader.moveTo(next + 2);
            return true;
        }
        behind = next == at ? nullptr : readPlainAttribute(next, end, before);
    }
    m_state.reader.moveTo(at);
    return false;
}

// Where the attribute ends, or null when it is not that plain. \param before  in and out: the name
// in front of the attribute, which is often followed by the same name as the last time
const char16_t* TagScanner::readPlainAttribute(const char16_t* name, const char16_t* end,
                                               KnownName*& before) {
    KnownName* known = m_state.names.findFollower(before, name, end);
    if (known == nullptr) {
        known = findPlainName(name, end);
        if (known == nullptr) {
            return nullptr;
        }
        if (before != nullptr) {
            before->follower = known;
        }
    }
    const char16_t quote = name[known->length + 1];
    const char16_t* const value = name + known->length + 2;
    if (quote != u'"' && quote != u'\'') {
        return nullptr;
    }
    const char16_t* const valueEnd = findAnyOr<u'&', u'<', u'\n', u'\t'>(value, end, quote);
    if (valueEnd == end || *valueEnd != quote) {
        return nullptr;
    }
    const std::u16string_view units(value, static_cast<std::size_t>(valueEnd - value));
    Attribute& attribute = m_state.attributes.addInWindow(known->name(), units);
    if (isDeclaration(attribute)) {
        declareNamespace(attribute);
    }
    before = known;
    return valueEnd + 1;
}

// The known name that stands before "=" and one more unit, or null.
KnownName* TagScanner::findPlainName(const char16_t* name, const char16_t* end) const {
    const char16_t* const nameEnd = findQNameEnd(name, end);
    if (end - nameEnd < 2 || *nameEnd != u'=') {
        return nullptr;
    }
    return m_state.names.findKnown({name, static_cast<std::size_t>(nameEnd - name)});
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
    AttributeList& attributes = m_state.attributes;
    const std::size_t start = attributes.keptValues().size();
    m_literals.read(LiteralMode::Attribute, attributes.keptValues());
    Attribute& attribute = attributes.addKept(name, start);
    if (isDeclaration(attribute)) {
        declareNamespace(attribute);
    }
}

void TagScanner::declareNamespace(Attribute& attribute) {
    const ZRNameEnum prefix = attribute.prefix == ZRN_xmlns ? attribute.name : ZRN_EMPTY;
    m_state.namespaces->declare(prefix, internSharedName(m_state.attributes.value(attribute)));
    attribute.namespaceUri = ZRN_ns_xmlns;
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
    m_state.namespaces->setBoundElement(name.prefix, uri, name.local);
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
        if (needsNamespace(attribute)) {
            isClean = resolvePrefix(attribute) && isClean;
        }
    }
    findDuplicates();
    if (!isClean || !m_duplicates.empty()) {
        reportAttributes();
    }
}

// Who asks in between sees namespaces up to the attribute in question, so they are resolved anew.
void TagScanner::reportAttributes() {
    for (Attribute& attribute : m_state.attributes) {
        attribute.namespaceUri = isDeclaration(attribute) ? ZRN_ns_xmlns : ZRN_EMPTY;
    }
    auto duplicate = m_duplicates.begin();
    for (std::size_t i = 0; i < m_state.attributes.size(); ++i) {
        Attribute& attribute = m_state.attributes[i];
        if (needsNamespace(attribute) && !resolvePrefix(attribute)) {
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

// The attributes that have the name of an earlier one, in order, and each once however many earlier
// ones there are, so that the work stays linear. Only those are compared whose
// names have a low bit pattern in common with an earlier one.
void TagScanner::findDuplicates() {
    m_duplicates.clear();
    const AttributeList& attributes = m_state.attributes;
    if (attributes.size() > kFewAttributes) {
        return findDuplicatesAmongMany();
    }
    std::uint64_t seen = 0;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        const std::uint64_t bit = std::uint64_t{1}
                                  << (static_cast<unsigned>(attributes[i].name) % 64);
        if ((seen & bit) != 0
            && std::any_of(
                attributes.begin(), attributes.begin() + static_cast<std::ptrdiff_t>(i),
                [&](const Attribute& earlier) { return isSameName(attributes[i], earlier); })) {
            m_duplicates.push_back(i);
        }
        seen |= bit;
    }
}

// By sorting, since no choice of names makes that slow.
void TagScanner::findDuplicatesAmongMany() {
    const AttributeList& attributes = m_state.attributes;
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
    if (known == nullptr || known->local != open.elementName()
        || known->prefix != open.elementPrefix()) {
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
