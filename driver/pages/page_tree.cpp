#include "driver/pages/page_tree.h"

#include "platform/foundation/message.h"

#include <set>
#include <stdexcept>

namespace {

constexpr std::size_t kMostLevels = 1000;  // programs that make PDFs need five for a million pages

struct Level {
    QPDFObjectHandle kids;
    int next;
    int count;
    InheritedValues values;
};

/// Some documents begin with a node in the middle of the tree.
QPDFObjectHandle rootOf(QPDF& pdf) {
    QPDFObjectHandle root = pdf.getRoot().getKey("/Pages");
    std::set<QPDFObjGen> seen;
    while (root.isDictionary() && root.getKey("/Parent").isDictionary() && seen.insert(root.getObjGen()).second) {
        root = root.getKey("/Parent");
    }
    return root;
}

InheritedValues valuesOf(QPDFObjectHandle node, const InheritedValues& above) {
    InheritedValues values = above;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (QPDFObjectHandle own = node.getKey(kInheritedKeys[i]); !own.isNull()) {
            values[i] = own;
        }
    }
    return values;
}

/// Gives the page what it inherits. A value becomes an object of its own, which all pages below the node share.
void complete(QPDF& pdf, QPDFObjectHandle page, InheritedValues* inherited) {
    for (std::size_t i = 0; i < inherited->size(); ++i) {
        QPDFObjectHandle& value = (*inherited)[i];
        if (value.isNull() || !page.getKey(kInheritedKeys[i]).isNull()) {
            continue;
        }
        if (!value.isIndirect() && !value.isScalar()) {
            value = pdf.makeIndirectObject(value);
        }
        page.replaceKey(kInheritedKeys[i], value);
    }
    page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
}

}  // namespace

void walkPages(QPDF& pdf, const TakePage& take) {
    std::set<QPDFObjGen> nodes;
    std::vector<Level> levels;
    const auto enter = [&](QPDFObjectHandle node, const InheritedValues& above) {
        if (node.isIndirect() && !nodes.insert(node.getObjGen()).second) {
            throw std::runtime_error(messageText("is damaged: some of its pages stand in a circle, or twice"));
        }
        if (levels.size() >= kMostLevels) {
            throw std::runtime_error(
                messageText("keeps its pages in groups inside of groups, more than %1 levels deep", {kMostLevels}));
        }
        QPDFObjectHandle kids = node.getKey("/Kids");
        levels.push_back({kids, 0, kids.isArray() ? kids.getArrayNItems() : 0, valuesOf(node, above)});
    };
    InheritedValues none;
    none.fill(QPDFObjectHandle::newNull());
    if (QPDFObjectHandle root = rootOf(pdf); root.isDictionary()) {
        enter(root, none);
    }
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.count) {
            levels.pop_back();
            continue;
        }
        QPDFObjectHandle kid = level.kids.getArrayItem(level.next++);
        if (kid.isDictionary() && kid.hasKey("/Kids")) {
            enter(kid, InheritedValues(level.values));  // the level may move
        } else {
            take(kid, level.values);
        }
    }
}

void replacePages(QPDF& pdf, const std::vector<QPDFObjectHandle>& pages) {
    QPDFObjectHandle tree = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
    for (QPDFObjectHandle page : pages) {
        page.replaceKey("/Parent", tree);
    }
    tree.replaceKey("/Type", QPDFObjectHandle::newName("/Pages"));
    tree.replaceKey("/Kids", QPDFObjectHandle::newArray(pages));
    tree.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(pages.size())));
    pdf.getRoot().replaceKey("/Pages", tree);
}

void flattenPages(QPDF& pdf) {
    std::vector<QPDFObjectHandle> pages;
    std::set<QPDFObjGen> seen;
    walkPages(pdf, [&](QPDFObjectHandle page, InheritedValues& inherited) {
        if (!page.isDictionary()) {
            return;
        }
        complete(pdf, page, &inherited);
        if (!page.isIndirect()) {
            page = pdf.makeIndirectObject(page);
        } else if (!seen.insert(page.getObjGen()).second) {
            page = pdf.makeIndirectObject(page.shallowCopy());
        }
        pages.push_back(page);
    });
    replacePages(pdf, pages);
}
