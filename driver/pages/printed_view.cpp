#include "driver/pages/printed_view.h"

#include <qpdf/Pl_Buffer.hh>
#include <qpdf/QPDFAcroFormDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace {

bool hasAnnotations(QPDFPageObjectHelper page) {
    QPDFObjectHandle annotations = page.getObjectHandle().getKey("/Annots");
    return annotations.isArray() && annotations.getArrayNItems() > 0;
}

/// What a stream draws, with its filters; nothing for one that cannot be decoded.
std::shared_ptr<Buffer> contentOf(QPDFObjectHandle stream) {
    Pl_Buffer content("appearance");
    bool isDecoded = false;
    return stream.pipeStreamData(&content, &isDecoded, 0, qpdf_dl_generalized, true) && isDecoded
               ? content.getBufferSharedPointer()
               : nullptr;
}

/// Whether a field shows something that has no mark where its value begins: a second one would lie over it.
bool isDrawnForGood(QPDFObjectHandle appearance) {
    const std::shared_ptr<Buffer> content = contentOf(appearance);
    if (!content) {
        return true;
    }
    const std::string_view text(reinterpret_cast<const char*>(content->getBuffer()), content->getSize());
    return text.find_first_not_of(" \r\n\t") != std::string_view::npos && text.find("BMC") == std::string_view::npos;
}

template <typename Take>
void eachAppearanceOfField(std::vector<QPDFPageObjectHelper>& pages, Take take) {
    for (QPDFPageObjectHelper& page : pages) {
        for (QPDFAnnotationObjectHelper& annotation : page.getAnnotations("/Widget")) {
            if (QPDFObjectHandle appearance = annotation.getAppearanceStream("/N"); appearance.isStream()) {
                take(appearance);
            }
        }
    }
}

/// Values are drawn by filters of their fields' streams, which are lost where streams are written as they are.
void drawFields(QPDF& pdf, std::vector<QPDFPageObjectHelper>& pages) {
    QPDFAcroFormDocumentHelper forms(pdf);
    if (!forms.getNeedAppearances()) {
        return;
    }
    std::set<QPDFObjGen> drawn;
    eachAppearanceOfField(pages, [&drawn](QPDFObjectHandle appearance) {
        if (isDrawnForGood(appearance)) {
            drawn.insert(appearance.getObjGen());
        }
    });
    forms.generateAppearancesIfNeeded();
    eachAppearanceOfField(pages, [&drawn](QPDFObjectHandle appearance) {
        const std::shared_ptr<Buffer> content =
            appearance.isDataModified() && !drawn.contains(appearance.getObjGen()) ? contentOf(appearance) : nullptr;
        if (content) {
            appearance.replaceStreamData(content, QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
        }
    });
}

QPDFObjectHandle keyOf(QPDFObjectHandle dictionary, const char* key) {
    return dictionary.isDictionary() ? dictionary.getKey(key) : QPDFObjectHandle::newNull();
}

std::vector<QPDFObjectHandle> elementsOf(QPDFObjectHandle array) {
    return array.isArray() ? array.getArrayAsVector() : std::vector<QPDFObjectHandle>();
}

bool isAboutPrinting(QPDFObjectHandle usage) {
    return keyOf(usage, "/Event").isNameAndEquals("/Print") &&
           std::ranges::any_of(elementsOf(keyOf(usage, "/Category")),
                               [](QPDFObjectHandle category) { return category.isNameAndEquals("/Print"); });
}

using LayerStates = std::map<QPDFObjGen, std::pair<QPDFObjectHandle, bool>>;

/// Which layers printing switches on and off, whatever a screen shows.
LayerStates statesOnPaper(QPDFObjectHandle configuration) {
    LayerStates states;
    for (QPDFObjectHandle usage : elementsOf(configuration.getKey("/AS"))) {
        if (!isAboutPrinting(usage)) {
            continue;
        }
        for (QPDFObjectHandle layer : elementsOf(usage.getKey("/OCGs"))) {
            QPDFObjectHandle state = keyOf(keyOf(keyOf(layer, "/Usage"), "/Print"), "/PrintState");
            if (layer.isIndirect() && state.isName()) {
                states[layer.getObjGen()] = {layer, state.getName() == "/ON"};
            }
        }
    }
    return states;
}

void switchLayers(QPDF& pdf) {
    QPDFObjectHandle configuration = keyOf(keyOf(pdf.getRoot(), "/OCProperties"), "/D");
    if (!configuration.isDictionary()) {
        return;
    }
    const LayerStates states = statesOnPaper(configuration);
    for (const bool isOn : {false, true}) {
        const char* const key = isOn ? "/ON" : "/OFF";
        std::vector<QPDFObjectHandle> layers = elementsOf(configuration.getKey(key));
        std::erase_if(layers, [&](QPDFObjectHandle layer) { return states.contains(layer.getObjGen()); });
        for (const auto& [number, state] : states) {
            if (state.second == isOn) {
                layers.push_back(state.first);
            }
        }
        configuration.replaceKey(key, QPDFObjectHandle::newArray(layers));
    }
}

}  // namespace

void showAsPrinted(QPDF& pdf) {
    std::vector<QPDFPageObjectHelper> pages = QPDFPageDocumentHelper(pdf).getAllPages();
    if (std::ranges::any_of(pages, hasAnnotations)) {
        drawFields(pdf, pages);
        QPDFPageDocumentHelper(pdf).flattenAnnotations(an_print, an_hidden);
    }
    switchLayers(pdf);
}
