#pragma once

#include <string>
#include <vector>

// The attribute tables of the documentation pages, all texts in UTF-8.
//
// A table stands between two marks, which the pages' readers do not see:
//
// <!-- attributes CLabelUI -->
// | Attribute | Value | Effect |
// |---|---|---|
// | `font` | number | font of the text |
//
// Inherited: all attributes of [CControlUI](Control.md).
// <!-- end attributes -->
//
// The effects are written by hand and kept; all else between the marks comes from the code.
namespace docs {

struct Attribute {
    std::string name;
    std::string value; // the kind, in a word
};

struct ClassAttributes {
    std::string name;
    std::string base; // the nearest class before it that has attributes; empty for none
    std::vector<Attribute> own;
};

struct Page {
    std::string file; // without folder
    std::string text;
};

struct Rewriting {
    std::vector<Page> pages;             // all of them, with their tables written anew
    std::vector<std::string> complaints; // what only a person can put right, a line each
};

// A new attribute gets a row without effect, and a row whose attribute is gone is dropped; both are
// complained of. So are classes that have attributes and no table, tables of classes that nobody
// knows, and marks that do not pair; such tables stay as they are.
Rewriting RewriteTables(const std::vector<ClassAttributes>& classes, std::vector<Page> pages);

// The complaints of the rewriting, and for each further page that it would change the first line
// that differs.
std::vector<std::string> CheckTables(const std::vector<ClassAttributes>& classes,
                                     const std::vector<Page>& pages);

} // namespace docs
