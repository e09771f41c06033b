// Test pieces for scenes, views and selections: a view implementation and a scene implementation
// that write down what they are asked, glyphs of fixed size that can be measured and placed (cells in
// a strip under a caching root), a text label drawn through Placement and TextGlyph, a hierarchical
// selection that walks that tree, and an editable scene built on them.
#pragma once

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "tavi/canvas/canvas.h"
#include "tavi/canvas/font.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/commands.h"
#include "tavi/glyph/editglyphscene.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/hierarchicalsingleselection.h"
#include "tavi/glyph/hint.h"
#include "tavi/glyph/placement.h"
#include "tavi/glyph/polyglyph.h"
#include "tavi/glyph/sceneimp.h"
#include "tavi/glyph/textglyph.h"
#include "tavi/glyph/textglyphcontext.h"
#include "tavi/glyph/viewimp.h"
#include "tavi/kxt/utf.h"

namespace SceneTest {

using Journal = std::vector<std::string>;

// A window that isn't there: its viewport is whatever the test sets, and every request is noted.
class FakeViewImp : public Tavi::ViewImp
{
public:
    Tavi::Scene *scene() const override { return scene_; }
    Tavi::Extension const &viewport() const override { return viewport_; }
    bool active() const override { return true; }
    bool focus() const override { return true; }
    void cursor(Tavi::View::Cursor) override {}
    void damage(Tavi::Extension const &) override {}
    void damage_all() override { ++damage_all_count; }
    void redraw_all() override {}
    void scene_extension_changed() override {}
    void scroll_to(Tavi::Point p) override
    {
        scrolls.push_back(p);
        // Moves the viewport as a window would.
        long const w = viewport_.right() - viewport_.left();
        long const h = viewport_.bottom() - viewport_.top();
        viewport_ = Tavi::Extension(p.y, p.x, p.y + h, p.x + w);
    }
    void do_scroll(Tavi::Input::ScrollCmd c) override { scroll_commands.push_back(c); }
    void show_message(Tavi::wchar const *text, Tavi::wchar const *caption, Tavi::MessageType type) override
    {
        messages.push_back(Kxt::to_string(caption) + "|" + Kxt::to_string(text) + "|" + std::to_string(type));
    }
    int start_timer(std::size_t ms) override { return static_cast<int>(ms) + 1000; }
    void stop_timer(int) override {}
    void capture_mouse() override {}
    void release_mouse() override {}
    bool silent_scroll_to(Tavi::Point) override { return false; }

    void set_scene(Tavi::Scene *s) { scene_ = s; }
    void set_viewport(Tavi::Extension const &e) { viewport_ = e; }

    int damage_all_count = 0;
    std::vector<Tavi::Point> scrolls;
    std::vector<Tavi::Input::ScrollCmd> scroll_commands;
    std::vector<std::string> messages;

private:
    Tavi::Scene *scene_ = nullptr;
    Tavi::Extension viewport_;
};

// A host scene implementation with any number of views and a modified mark.
class FakeSceneImp : public Tavi::SceneImp
{
public:
    long view_count() override { return static_cast<long>(views.size()); }
    Tavi::View *view_at(long index) override { return views.at(static_cast<std::size_t>(index)); }
    void modified(bool m) override { modified_ = m; }
    bool modified() const override { return modified_; }
    int modifier_state() override { return 0; }

    std::vector<Tavi::View *> views;

private:
    bool modified_ = false;
};

// A leaf of fixed size.
class Cell : public Tavi::Glyph
{
public:
    explicit Cell(Tavi::Box box) : box_(box) {}
    Tavi::BoxTree *request(Tavi::GlyphContext &, Tavi::BoxTree const &) override
    {
        return new Tavi::BoxTreeLeaf(box_);
    }

private:
    Tavi::Box box_;
};

// Children side by side on one baseline; component i is placed at its box's offset.
class Strip : public Tavi::PolyGlyph<Tavi::Glyph>
{
public:
    Tavi::BoxTree *request(Tavi::GlyphContext &context, Tavi::BoxTree const &limits) override
    {
        auto *node = new Tavi::BoxTreeNode();
        for (long i = 0; i < count(); ++i)
            node->append(component(i)->request(context, limits));
        return node;
    }
    Tavi::AllocationTree *allocate(long index, Tavi::GlyphContext &, Tavi::AllocationTree const &a) override
    {
        Tavi::BoxTree const *child = a.boxtree()->child(index);
        return new Tavi::AllocationTree(a.point() + child->offset(), child);
    }
};

// The top of a shown tree, with one child, as a formula root has: it keeps the tree it measured until
// it is invalidated, and places its child at its own point.
class Root : public Tavi::Glyph
{
public:
    explicit Root(Tavi::Glyph *child) : child_(child)
    {
        child_->ref();
        child_->parent(this);
    }
    ~Root() override
    {
        child_->parent(nullptr);
        child_->unref();
    }
    Tavi::BoxTree *request(Tavi::GlyphContext &context, Tavi::BoxTree const &limits) override
    {
        if (!cache_) {
            ++measures;
            auto *node = new Tavi::BoxTreeNode();
            node->append(child_->request(context, limits));
            cache_.reset(node);
        }
        return cache_.get();
    }
    Tavi::AllocationTree *allocate(long, Tavi::GlyphContext &, Tavi::AllocationTree const &a) override
    {
        return new Tavi::AllocationTree(a.point(), a.boxtree()->child(0));
    }
    void draw(Tavi::GlyphContext &context, Tavi::AllocationTree const &a) override
    {
        ++draws;
        child_->draw(context, Tavi::AllocationTree(a.point(), a.boxtree()->child(0)));
    }
    void invalidate_allocation() override
    {
        ++invalidations;
        cache_.reset();
        child_->invalidate_allocation();
    }
    long count() override { return 1; }
    Tavi::Glyph *component(long) override { return child_; }
    Tavi::GlyphScene *scene() override { return scene_; }

    void set_scene(Tavi::GlyphScene *s) { scene_ = s; }
    Tavi::Glyph *child() const { return child_; }

    int measures = 0;
    int draws = 0;
    int invalidations = 0;

private:
    Tavi::Glyph *child_;
    std::unique_ptr<Tavi::BoxTree> cache_;
    Tavi::GlyphScene *scene_ = nullptr;
};

// One line of text in one font: measured with the gauge, drawn by a TextGlyph in a Placement, whose
// origin is the left end of the baseline. A gauge whose metrics come in another unit than the
// surface draws in is met by a scale (numerator / denominator, truncated) on every measured value.
class Label : public Tavi::Glyph
{
public:
    Label(Tavi::wchar const *text, Tavi::Font const &font, long scale_numerator = 1, long scale_denominator = 1)
        : text_(text), font_(font), body_(new Tavi::Placement), numerator_(scale_numerator),
          denominator_(scale_denominator)
    {
        body_->ref();
        body_->append(new Tavi::TextGlyph(text));
    }
    ~Label() override { body_->unref(); }
    Tavi::BoxTree *request(Tavi::GlyphContext &context, Tavi::BoxTree const &) override
    {
        Tavi::Gauge *gauge = context.gauge();
        gauge->font(font_, Tavi::Gauge::cs_unicode, 0);
        Tavi::Box const box = gauge->text_box(text_.c_str(), static_cast<long>(text_.size()));
        return new Tavi::BoxTreeLeaf(scaled(box.width()), scaled(box.ascent()), scaled(box.descent()));
    }
    void draw(Tavi::GlyphContext &context, Tavi::AllocationTree const &a) override
    {
        Tavi::TextGlyphContext text_context(context, font_, Tavi::Color::black, Tavi::Gauge::cs_unicode);
        body_->draw(text_context, a);
    }

private:
    long scaled(long v) const { return v * numerator_ / denominator_; }

    Kxt::wstring text_;
    Tavi::Font font_;
    Tavi::Placement *body_;
    long numerator_;
    long denominator_;
};

// A selection of one glyph of the tree, which can select inward to any child. Its name tells a
// glyph with children ("branch") from one without ("leaf"). It notes what reaches it in the journal.
class PathSelection : public Tavi::HierarchicalSingleSelection
{
public:
    PathSelection(Tavi::Selection *owner, long index, Journal *journal)
        : HierarchicalSingleSelection(owner, index), journal_(journal)
    {
    }

    bool select_child(long index) override
    {
        note("select_child:" + std::to_string(index));
        if (refuse_children)
            return false;
        sub_selection(new PathSelection(this, index, journal_));
        return true;
    }
    Tavi::wchar const *own_type_name() override { return glyph() && glyph()->count() > 0 ? u"branch" : u"leaf"; }
    Tavi::SelectionMemo *memo() override { return nullptr; }  // no test undoes

    // Selects, level by level, the child whose allocation holds the point.
    bool select_at(Tavi::GlyphContext &context, Tavi::AllocationTree const &a, Tavi::Point p) override
    {
        sub_selection(nullptr);
        if (!a.contains(p))
            return false;
        for (long i = 0; i < glyph()->count(); ++i) {
            std::unique_ptr<Tavi::AllocationTree> child(glyph()->allocate(i, context, a));
            if (child && child->contains(p)) {
                select_child(i);
                sub_selection()->select_at(context, *child, p);
                break;
            }
        }
        return true;
    }

    // Copy is always possible; delete only when allowed. Both are noted when carried out.
    bool handle_command_state(Tavi::Command *c) override
    {
        Tavi::Command &command = *c;
        if (typeid(command) == typeid(Tavi::CopyCmd) || (typeid(command) == typeid(Tavi::DeleteCmd) && deletable)) {
            c->enable(true);
            return true;
        }
        return HierarchicalSingleSelection::handle_command_state(c);
    }
    bool handle_command(Tavi::Command *c) override
    {
        Tavi::Command &command = *c;
        std::string const name = typeid(command) == typeid(Tavi::CopyCmd)     ? "copy"
                                 : typeid(command) == typeid(Tavi::DeleteCmd) ? "delete"
                                                                             : "";
        if (!name.empty()) {
            note(name + ":" + std::to_string(glyph_index()));
            return true;
        }
        return HierarchicalSingleSelection::handle_command(c);
    }
    bool key_down(Tavi::Input::Key key, int modifiers) override
    {
        if (sub_selection())
            return HierarchicalSingleSelection::key_down(key, modifiers);
        note("key:" + std::to_string(key) + "/" + std::to_string(modifiers));
        return key == take_key;
    }

    bool deletable = true;
    bool refuse_children = false;
    Tavi::Input::Key take_key = Tavi::Input::key_none;

private:
    void note(std::string s)
    {
        if (journal_)
            journal_->push_back(std::move(s));
    }

    Journal *journal_;
};

// An editable scene over a Root. Its selections are PathSelections, and it notes damage.
class TestScene : public Tavi::EditGlyphScene
{
public:
    explicit TestScene(Root *root) : root_(root)
    {
        root_->ref();
        root_->set_scene(this);
    }
    ~TestScene() override
    {
        // The selection goes first, while the tree it points into still stands.
        selection(nullptr);
        root_->set_scene(nullptr);
        root_->unref();
    }
    Tavi::Glyph *glyph() override { return root_; }
    void damage_content(Tavi::DamageAspect const &aspect) override
    {
        damages.push_back(typeid(aspect) == typeid(Tavi::DamageSelection) ? "selection" : "content");
        EditGlyphScene::damage_content(aspect);
    }

    using GlyphScene::selection;

    Journal journal;
    std::vector<std::string> damages;

protected:
    Tavi::Selection *create_selection(long index) override
    {
        journal.push_back("create:" + std::to_string(index));
        return new PathSelection(this, index, &journal);
    }

private:
    Root *root_;
};

// Root(Strip(cell, cell, cell)) with cells of width 30, ascent 8 and descent 2: the strip is 90 wide
// and the cells stand at x 0, 30 and 60.
inline Root *make_strip_root()
{
    auto *strip = new Strip;
    for (int i = 0; i < 3; ++i)
        strip->append(new Cell(Tavi::Box(30, 8, 2)));
    return new Root(strip);
}

}  // namespace SceneTest
