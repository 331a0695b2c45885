// PDF documents for tests, written as text: pages as a test wants them, and what readers of PDFs find on them.
#pragma once

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

struct TestPage {
    std::string keys = "/MediaBox[0 0 612 792]";  // of the page's dictionary
    std::string content = "";                     // beside its number, in 36 points at 72, 72
    std::string resources = "";                   // beside its font
    std::string ground = "";                      // painted before its number
};

/// A document whose page n shows "Pn". `catalog` has further keys, and the objects from 4 on are `objects`.
inline std::string pdfOf(const std::vector<TestPage>& pages, const std::string& catalog = {},
                         const std::vector<std::string>& objects = {}) {
    std::vector<std::string> all{"<</Type/Catalog/Pages 2 0 R" + catalog + ">>", "",
                                 "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"};
    all.insert(all.end(), objects.begin(), objects.end());
    std::string kids;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const std::string content =
            pages[i].ground + "BT /F1 36 Tf 72 72 Td (P" + std::to_string(i + 1) + ") Tj ET\n" + pages[i].content;
        all.push_back("<</Length " + std::to_string(content.size()) + ">>stream\n" + content + "\nendstream");
        all.push_back("<</Type/Page/Parent 2 0 R" + pages[i].keys + "/Contents " + std::to_string(all.size()) +
                      " 0 R/Resources<</Font<</F1 3 0 R>>" + pages[i].resources + ">>>>");
        kids += std::to_string(all.size()) + " 0 R ";
    }
    all[1] = "<</Type/Pages/Count " + std::to_string(pages.size()) + "/Kids[" + kids + "]>>";
    std::string text = "%PDF-1.6\n";
    std::string table;
    for (std::size_t i = 0; i < all.size(); ++i) {
        char row[24];
        std::snprintf(row, sizeof row, "%010zu 00000 n \n", text.size());
        table += row;
        text += std::to_string(i + 1) + " 0 obj\n" + all[i] + "\nendobj\n";
    }
    const std::string start = std::to_string(text.size());
    const std::string count = std::to_string(all.size() + 1);
    return text + "xref\n0 " + count + "\n0000000000 65535 f \n" + table + "trailer<</Size " + count +
           "/Root 1 0 R>>\nstartxref\n" + start + "\n%%EOF\n";
}

inline std::string outputOfCommand(const std::string& command) {
    std::string output;
    FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        output += static_cast<char>(c);
    }
    pclose(pipe);
    return output;
}

/// What Poppler finds in a PDF: "612x792: P1@72,684" a page and line, with where each word begins, from the upper left
/// corner, in whole points.
inline std::string wordsOfPDF(const std::string& path) {
    std::istringstream boxes(outputOfCommand("pdftotext -bbox '" + path + "' -"));
    std::string words;
    for (std::string line; std::getline(boxes, line);) {
        const auto number = [&line](const char* name) {
            const std::size_t at = line.find(name);
            return at == std::string::npos
                       ? 0
                       : static_cast<int>(std::stod(line.substr(at + std::string(name).size())) + 0.5);
        };
        if (line.find("<page ") != std::string::npos) {
            words += (words.empty() ? "" : "\n") + std::to_string(number("width=\"")) + "x" +
                     std::to_string(number("height=\"")) + ":";
        } else if (line.find("<word ") != std::string::npos) {
            const std::size_t from = line.find('>') + 1;
            words += " " + line.substr(from, line.find('<', from) - from) + "@" + std::to_string(number("xMin=\"")) +
                     "," + std::to_string(number("yMin=\""));
        }
    }
    return words;
}
