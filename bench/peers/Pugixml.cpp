// pugixml: the fastest tree of any kind, without namespaces; and its way of writing a tree.

#include <cstring>
#include <memory>
#include <pugixml.hpp>
#include <stdexcept>

#include "bench/peers/Contenders.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

constexpr unsigned int kOptions = pugi::parse_default | pugi::parse_ws_pcdata;

class Walker : public pugi::xml_tree_walker {
public:
    bool for_each(pugi::xml_node& node) override {
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            tally.units += std::strlen(node.value());
        } else if (node.type() == pugi::node_element) {
            takeElement(node);
        }
        return true;
    }

    Tally tally;

private:
    void takeElement(const pugi::xml_node& node) {
        ++tally.elements;
        keep(node.name());
        for (const pugi::xml_attribute& attribute : node.attributes()) {
            ++tally.attributes;
            keep(attribute.name());
            tally.units += std::strlen(attribute.value());
        }
    }
};

Tally runTree(std::string_view document, const std::function<void()>& onLoaded) {
    pugi::xml_document tree;
    if (!tree.load_buffer(document.data(), document.size(), kOptions)) {
        throw std::runtime_error("pugixml: not well-formed");
    }
    onLoaded();
    Walker walker;
    tree.traverse(walker);
    return walker.tally;
}

class Sink : public pugi::xml_writer {
public:
    void write(const void* data, std::size_t size) override {
        bytes.append(static_cast<const char*>(data), size);
    }

    std::string bytes;
};

std::string qualified(const WriteEvent& event) {
    return event.prefix.empty() ? event.name : event.prefix + ":" + event.name;
}

std::shared_ptr<pugi::xml_document> treeOf(const std::vector<WriteEvent>& events) {
    auto tree = std::make_shared<pugi::xml_document>();
    pugi::xml_node open = *tree;
    for (const WriteEvent& event : events) {
        switch (event.kind) {
        case WriteEvent::Kind::Start: open = open.append_child(qualified(event).c_str()); break;
        case WriteEvent::Kind::Attribute:
            open.append_attribute(qualified(event).c_str()).set_value(event.value.c_str());
            break;
        case WriteEvent::Kind::Text:
            open.append_child(pugi::node_pcdata).set_value(event.value.c_str());
            break;
        case WriteEvent::Kind::End: open = open.parent(); break;
        }
    }
    return tree;
}

std::function<std::size_t()> prepareWriter(const std::vector<WriteEvent>& events) {
    auto sink = std::make_shared<Sink>();
    return [sink, tree = treeOf(events)] {
        sink->bytes.clear();
        tree->save(*sink, "", pugi::format_raw, pugi::encoding_utf8);
        return sink->bytes.size();
    };
}

}  // namespace

void addPugixml(Contenders& contenders) {
    contenders.tree.push_back({"pugixml", Form::Utf8, runTree});
    contenders.write.push_back({"pugixml-tree", prepareWriter});
}

}  // namespace ZroCommon::bench
