// EditHistory.
#include "tavi/editing/edithistory.h"

#include <algorithm>

#include "tavi/kxt/operation.h"

namespace Tavi {

EditHistory::EditHistory(std::size_t depth) : depth_(std::max<std::size_t>(depth, 1)) {}

EditHistory::~EditHistory() = default;

void EditHistory::record(Kxt::Operation *op, bool done, EditKind kind)
{
    std::unique_ptr<Kxt::Operation> owned(op);
    if (!done || kind == EditKind::mode)
        return;
    undone_.clear();
    if (kind == EditKind::typing && typing_open_ && !done_.empty()) {
        done_.back().ops.push_back(std::move(owned));
        return;
    }
    done_.emplace_back();
    done_.back().ops.push_back(std::move(owned));
    typing_open_ = kind == EditKind::typing_start || kind == EditKind::typing;
    trim();
}

bool EditHistory::undo()
{
    if (done_.empty())
        return false;
    Step step = std::move(done_.back());
    done_.pop_back();
    typing_open_ = false;
    for (auto it = step.ops.rbegin(); it != step.ops.rend(); ++it)
        (*it)->undo();
    undone_.push_back(std::move(step));
    return true;
}

bool EditHistory::redo()
{
    if (undone_.empty())
        return false;
    Step step = std::move(undone_.back());
    undone_.pop_back();
    typing_open_ = false;
    for (auto &op : step.ops)
        op->redo();
    done_.push_back(std::move(step));
    return true;
}

void EditHistory::clear()
{
    done_.clear();
    undone_.clear();
    typing_open_ = false;
}

void EditHistory::depth(std::size_t steps)
{
    depth_ = std::max<std::size_t>(steps, 1);
    trim();
}

void EditHistory::trim()
{
    while (done_.size() > depth_)
        done_.pop_front();
}

}  // namespace Tavi
