// The commands that menus, keys and client calls send down the handler chain. Handlers tell them
// apart by exact class. Commands that carry text keep the caller's pointer and copy nothing: they
// are built on the caller's stack for one call, and the text must outlive them.
#pragma once

#include <cstddef>

#include "tavi/glyph/command.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class UndoCmd : public Command
{
public:
    UndoCmd() = default;
    ~UndoCmd() override;
};

class RedoCmd : public Command
{
public:
    RedoCmd() = default;
    ~RedoCmd() override;
};

class CopyCmd : public Command
{
public:
    CopyCmd() = default;
    ~CopyCmd() override;
};

class PasteCmd : public Command
{
public:
    PasteCmd() = default;
    ~PasteCmd() override;
};

class DeleteCmd : public Command
{
public:
    DeleteCmd() = default;
    ~DeleteCmd() override;
};

class SelectAllCmd : public Command
{
public:
    SelectAllCmd() = default;
    ~SelectAllCmd() override;
};

class SelectOutCmd : public Command
{
public:
    SelectOutCmd() = default;
    ~SelectOutCmd() override;
};

class SelectInCmd : public Command
{
public:
    SelectInCmd() = default;
    ~SelectInCmd() override;
};

class SelectNextCmd : public Command
{
public:
    SelectNextCmd() = default;
    ~SelectNextCmd() override;
};

class SelectPreviousCmd : public Command
{
public:
    SelectPreviousCmd() = default;
    ~SelectPreviousCmd() override;
};

class SelectExprCmd : public Command
{
public:
    SelectExprCmd() = default;
    ~SelectExprCmd() override;
};

class ToggleReadOnlyCmd : public FlipFlop
{
public:
    explicit ToggleReadOnlyCmd(bool on) : FlipFlop(on) {}
    ~ToggleReadOnlyCmd() override;
};

class ToggleInheritReadOnlyCmd : public FlipFlop
{
public:
    explicit ToggleInheritReadOnlyCmd(bool on) : FlipFlop(on) {}
    ~ToggleInheritReadOnlyCmd() override;
};

class InsertOverlayCmd : public Command
{
public:
    explicit InsertOverlayCmd(wchar const *name) : name_(name) {}
    ~InsertOverlayCmd() override;
    wchar const *name() const { return name_; }

private:
    wchar const *name_;
};

class InsertSymbolOverlayCmd : public Command
{
public:
    explicit InsertSymbolOverlayCmd(wchar const *name) : name_(name) {}
    ~InsertSymbolOverlayCmd() override;
    wchar const *name() const { return name_; }

private:
    wchar const *name_;
};

class InsertCharByNameCmd : public Command
{
public:
    explicit InsertCharByNameCmd(wchar const *name) : name_(name) {}
    ~InsertCharByNameCmd() override;
    wchar const *name() const { return name_; }

private:
    wchar const *name_;
};

class InsertNumberCmd : public Command
{
public:
    explicit InsertNumberCmd(wchar const *number) : number_(number) {}
    ~InsertNumberCmd() override;
    wchar const *number() const { return number_; }

private:
    wchar const *number_;
};

class InsertApplyOverlayCmd : public Command
{
public:
    explicit InsertApplyOverlayCmd(wchar const *function) : function_(function) {}
    ~InsertApplyOverlayCmd() override;
    wchar const *function() const { return function_; }

private:
    wchar const *function_;
};

class InsertTabularOverlayCmd : public Command
{
public:
    InsertTabularOverlayCmd(wchar const *name, std::size_t rows, std::size_t columns)
        : name_(name), rows_(rows), columns_(columns)
    {
    }
    ~InsertTabularOverlayCmd() override;
    wchar const *name() const { return name_; }
    std::size_t rows() const { return rows_; }
    std::size_t columns() const { return columns_; }

private:
    wchar const *name_;
    std::size_t rows_;
    std::size_t columns_;
};

}  // namespace Tavi
