// Test glyphs for the glyph folder: a leaf that writes what happens to it into a journal and counts
// its own destruction, and a small tree builder from a text such as "R(a,S(b,c))".
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tavi/glyph/glyph.h"
#include "tavi/glyph/row.h"

namespace GlyphTest {

using Journal = std::vector<std::string>;

// A leaf that notes "undraw:<name>" (with "+p" when it still has a parent and the reference count
// at that moment) and "die:<name>", and optionally every ref and unref.
class Probe : public Tavi::Glyph
{
public:
    explicit Probe(std::string name, Journal *journal = nullptr, int *deaths = nullptr)
        : name_(std::move(name)), journal_(journal), deaths_(deaths)
    {
    }
    ~Probe() override
    {
        note("die:" + name_);
        if (deaths_)
            ++*deaths_;
    }

    void ref() const override
    {
        if (trace_refs)
            note("ref:" + name_);
        Tavi::Glyph::ref();
    }
    void unref() const override
    {
        if (trace_refs)
            note("unref:" + name_);
        Tavi::Glyph::unref();
    }
    void undraw() override
    {
        note("undraw:" + name_ + (parent() ? "+p" : "") + "/" + std::to_string(ref_count()));
    }

    std::string const &name() const { return name_; }

    bool trace_refs = false;

private:
    void note(std::string s) const
    {
        if (journal_)
            journal_->push_back(std::move(s));
    }

    std::string name_;
    Journal *journal_;
    int *deaths_;
};

// A Row with a name, for trees whose walk order is checked by name.
class NamedRow : public Tavi::Row
{
public:
    explicit NamedRow(std::string name, int *deaths) : name_(std::move(name)), deaths_(deaths) {}
    ~NamedRow() override
    {
        if (deaths_)
            ++*deaths_;
    }
    std::string const &name() const { return name_; }

private:
    std::string name_;
    int *deaths_;
};

inline std::string name_of(Tavi::Glyph *g)
{
    if (auto *p = dynamic_cast<Probe *>(g))
        return p->name();
    if (auto *r = dynamic_cast<NamedRow *>(g))
        return r->name();
    return g ? "?" : "null";
}

// Builds a tree from text: a lower-case letter is a Probe; an upper-case letter followed by a
// parenthesised, comma-separated list is a NamedRow of those children ("E()" is an empty row).
// The caller gets the root with one reference; `deaths` counts every glyph destroyed.
class TreeBuilder
{
public:
    TreeBuilder(std::string text, int *deaths) : text_(std::move(text)), deaths_(deaths) {}

    Tavi::Glyph *build()
    {
        pos_ = 0;
        Tavi::Glyph *root = node();
        root->ref();
        return root;
    }
    // How many glyphs the text describes.
    int size() const
    {
        int n = 0;
        for (char c : text_)
            n += (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        return n;
    }

private:
    Tavi::Glyph *node()
    {
        char const c = text_.at(pos_++);
        if (c >= 'a' && c <= 'z')
            return new Probe(std::string(1, c), nullptr, deaths_);
        auto *row = new NamedRow(std::string(1, c), deaths_);
        if (pos_ < text_.size() && text_[pos_] == '(') {
            ++pos_;
            while (text_.at(pos_) != ')') {
                row->append(node());
                if (text_[pos_] == ',')
                    ++pos_;
            }
            ++pos_;
        }
        return row;
    }

    std::string text_;
    int *deaths_;
    std::size_t pos_ = 0;
};

}  // namespace GlyphTest
