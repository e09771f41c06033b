// VarArg: the one dynamically typed value of the client calls, and its twelve classes. A host's
// arguments and the library's results travel as VarArg objects, and a call's arguments are tested
// against a signature string before anything is done with them.
//
// The signature language, read left to right, one item per value:
//
//   letter       a value of the class with that letter (l d b s i 0 n o D m)
//   .            any one value
//   *item        zero or more values of the item
//   +item        one or more values of the item
//   [items]      a ListArg whose elements match the items in order
//   <items>      a TableArg whose key, value, key, value ... match the items in order
//
// The rules are kept as they have always answered, odd corners included: a `*` that matched leaves
// the pointer on itself (ready for the next value), so no whole signature with a `*` ends at its
// terminating zero; a `*` that fails on the item behind it eats that item instead; a `+` never moves
// the pointer. Hosts depend on those answers, so they are not "fixed" here.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "tavi/kxt/wchar.h"

namespace Tavi {

class ListArg;
class MathNode;
class TableArg;

class VarArg
{
public:
    virtual ~VarArg();
    // A deep copy, owned by the caller.
    virtual VarArg *clone() const = 0;
    // Tests this value against the signature at `s`: true moves `s` past what was used.
    virtual bool match_type(char const *&s) const;
    // Each read answers true, and fills its argument, only in the class that holds that kind of value.
    virtual bool long_val(long &value) const;
    virtual bool bool_val(bool &value) const;
    virtual bool double_val(double &value) const;
    virtual bool string_val(wchar const *&value) const;
    virtual bool ident_val(wchar const *&value) const;
    virtual bool list_val(ListArg const *&value) const;
    virtual bool table_val(TableArg const *&value) const;
    virtual bool obj_val(long &value) const;
    virtual bool domain_val(VarArg *&value) const;
    // The tag of the value in the host's own value system.
    virtual int cat_type() const = 0;
    virtual long cat_childs() const;

protected:
    VarArg() = default;
    VarArg(VarArg const &) = default;
    VarArg &operator=(VarArg const &) = default;

    // Skips one item of the signature without testing a value; the base takes only a `.`.
    virtual bool eat_type(char const *&s) const;
    // The rule that every class runs once its own test has failed: `*`, `+` and `.`.
    bool match_common(char const *&s) const;
    // The rule of the classes with a letter: the letter, or the common rule.
    bool match_letter(char letter, char const *&s) const;
    bool eat_letter(char letter, char const *&s) const;
};

class LongArg : public VarArg
{
public:
    explicit LongArg(long value) : value_(value) {}
    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool long_val(long &value) const override;
    int cat_type() const override;

protected:
    bool eat_type(char const *&s) const override;

private:
    long value_;
};

class DoubleArg : public VarArg
{
public:
    explicit DoubleArg(double value) : value_(value) {}
    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool double_val(double &value) const override;
    int cat_type() const override;

protected:
    bool eat_type(char const *&s) const override;

private:
    double value_;
};

class BoolArg : public VarArg
{
public:
    explicit BoolArg(bool value) : value_(value) {}
    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool bool_val(bool &value) const override;
    int cat_type() const override;

protected:
    bool eat_type(char const *&s) const override;

private:
    bool value_;
};

// Keeps its own copy of the text; a null text is the empty string.
class StringArg : public VarArg
{
public:
    explicit StringArg(wchar const *text);
    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool string_val(wchar const *&value) const override;
    int cat_type() const override;
    wchar const *string() const { return text_.c_str(); }

protected:
    bool eat_type(char const *&s) const override;

private:
    wstring text_;
};

// A name rather than a text (a key of a host's record, say); kept as a copy.
class IdentArg : public VarArg
{
public:
    explicit IdentArg(wchar const *name);
    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool ident_val(wchar const *&value) const override;
    int cat_type() const override;
    wchar const *name() const { return name_.c_str(); }

protected:
    bool eat_type(char const *&s) const override;

private:
    wstring name_;
};

class NullArg : public VarArg
{
public:
    NullArg() = default;
    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    int cat_type() const override;

protected:
    bool eat_type(char const *&s) const override;
};

// "No object": what a call gives where an object could stand but none does.
class NilArg : public VarArg
{
public:
    NilArg() = default;
    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    int cat_type() const override;

protected:
    bool eat_type(char const *&s) const override;
};

// Owns its elements. push_back takes over the pointer it is given.
class ListArg : public VarArg
{
public:
    ListArg();
    ~ListArg() override;
    ListArg(ListArg const &) = delete;
    ListArg &operator=(ListArg const &) = delete;

    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool list_val(ListArg const *&value) const override;
    int cat_type() const override;
    // The number of elements.
    long cat_childs() const override;

    std::size_t size() const { return items_.size(); }
    // Raises std::out_of_range("invalid vector<T> subscript") outside the list.
    VarArg *at(std::size_t index) const;
    void push_back(VarArg *value);

protected:
    bool eat_type(char const *&s) const override;

private:
    std::vector<std::unique_ptr<VarArg>> items_;
};

// Ordered pairs of key and value, both owned, kept in one vector: key, value, key, value ...
class TableArg : public VarArg
{
public:
    TableArg();
    ~TableArg() override;
    TableArg(TableArg const &) = delete;
    TableArg &operator=(TableArg const &) = delete;

    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool table_val(TableArg const *&value) const override;
    int cat_type() const override;
    long cat_childs() const override;

    // The number of pairs.
    std::size_t size() const { return items_.size() / 2; }
    // Both raise std::out_of_range("invalid vector<T> subscript") for a pair that is not there.
    VarArg *key_at(std::size_t index) const;
    VarArg *value_at(std::size_t index) const;
    void push_back(VarArg *key, VarArg *value);

protected:
    bool eat_type(char const *&s) const override;

private:
    std::vector<std::unique_ptr<VarArg>> items_;
};

// An object of the library, named by the id its manager gave it.
class ClientObjectArg : public VarArg
{
public:
    explicit ClientObjectArg(long id) : id_(id) {}
    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool obj_val(long &value) const override;
    int cat_type() const override;
    long cat_childs() const override;
    long object_id() const { return id_; }

protected:
    bool eat_type(char const *&s) const override;

private:
    long id_;
};

// A value from the domain of a key; the key is taken over.
class DomainArg : public VarArg
{
public:
    explicit DomainArg(VarArg *key);
    ~DomainArg() override;
    DomainArg(DomainArg const &) = delete;
    DomainArg &operator=(DomainArg const &) = delete;

    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    bool domain_val(VarArg *&value) const override;
    int cat_type() const override;
    long cat_childs() const override;
    VarArg *key() const { return key_.get(); }

protected:
    bool eat_type(char const *&s) const override;

private:
    std::unique_ptr<VarArg> key_;
};

// A node of a formula, held with one reference for the life of the value.
class MathNodeArg : public VarArg
{
public:
    explicit MathNodeArg(MathNode *node);
    ~MathNodeArg() override;
    MathNodeArg(MathNodeArg const &) = delete;
    MathNodeArg &operator=(MathNodeArg const &) = delete;

    VarArg *clone() const override;
    bool match_type(char const *&s) const override;
    // Shares the tag of ClientObjectArg: the host's value system files both as objects.
    int cat_type() const override;
    long cat_childs() const override;
    MathNode *math_node() const { return node_; }

protected:
    bool eat_type(char const *&s) const override;

private:
    MathNode *node_;
};

}  // namespace Tavi
