// LayoutProbe: a layout for tests that writes its requests, draws and own neighbour rule into a
// journal and answers what the test tells it: which node child it shows (as a placeholder would), the
// box its request gives, the result of its own neighbour rule, a table pointer. Without a shown child
// it behaves as the generic composite and asks its children.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/mathpolylayout.h"
#include "tavi/math/mathnodecontext.h"

namespace LayoutTest {

using Journal = std::vector<std::string>;

class LayoutProbe : public Tavi::MathPolyLayout
{
public:
    explicit LayoutProbe(std::string name, Journal *journal = nullptr, int *deaths = nullptr)
        : name_(std::move(name)), journal_(journal), deaths_(deaths)
    {
    }
    ~LayoutProbe() override
    {
        if (deaths_)
            ++*deaths_;
    }

    // The node child this probe shows, like a fixed placeholder.
    LayoutProbe *shows(long index)
    {
        has_index_ = true;
        index_ = index;
        return this;
    }
    // The box of request.
    LayoutProbe *box(long width, long ascent, long descent)
    {
        width_ = width;
        ascent_ = ascent;
        descent_ = descent;
        return this;
    }
    // Own neighbour rule: from `index` with `key` go to `result`.
    LayoutProbe *neighbour(long index, Tavi::Input::Key key, long result)
    {
        neighbours_[{index, key}] = result;
        return this;
    }
    LayoutProbe *with_table(Tavi::LayoutTable *table)
    {
        table_ = table;
        return this;
    }
    LayoutProbe *add(Tavi::MathLayout *child)
    {
        append(child);
        return this;
    }

    Tavi::BoxTree *request(Tavi::GlyphContext &, Tavi::BoxTree const &constraint) override
    {
        note("request:" + name_ + "/" + std::to_string(constraint.width()));
        return new Tavi::BoxTreeLeaf(width_, ascent_, descent_);
    }
    void draw(Tavi::GlyphContext &, Tavi::AllocationTree const &allocation) override
    {
        note("draw:" + name_ + at(allocation));
    }
    Tavi::LayoutTable *table() override { return table_ ? table_ : Tavi::MathLayout::table(); }

    bool has_child_node(Tavi::MathNodeContext &context, long index) override
    {
        if (!has_index_)
            return Tavi::MathLayout::has_child_node(context, index);
        return index == index_;
    }
    bool get_child_node(Tavi::MathNodeContext &context, long &index) override
    {
        if (!has_index_)
            return Tavi::MathLayout::get_child_node(context, index);
        index = index_;
        return true;
    }

protected:
    bool get_my_neighbour_child(Tavi::MathNodeContext &, long index, Tavi::Input::Key key, long &result) override
    {
        note("neighbour:" + name_);
        auto found = neighbours_.find({index, key});
        if (found == neighbours_.end())
            return false;
        result = found->second;
        return true;
    }

private:
    void note(std::string text) const
    {
        if (journal_)
            journal_->push_back(std::move(text));
    }
    static std::string at(Tavi::AllocationTree const &a)
    {
        return "@" + std::to_string(a.point().x) + "," + std::to_string(a.point().y);
    }

    std::string name_;
    Journal *journal_;
    int *deaths_;
    bool has_index_ = false;
    long index_ = 0;
    long width_ = 0;
    long ascent_ = 0;
    long descent_ = 0;
    std::map<std::pair<long, int>, long> neighbours_;
    Tavi::LayoutTable *table_ = nullptr;
};

}  // namespace LayoutTest
