// TemplateTable's setup reader: the setup file parsed with expat in blocks, the handlers it drives,
// the attribute lookups, and the rules of the document elements (mathsetup, content, changecontent,
// layout). The layout expressions inside a layout element are in setuplayouts.cpp.
#include <cstring>
#include <string>
#include <typeinfo>
#include <vector>

#include <expat.h>

#include "tavi/kxt/stream.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/setupgrammar.h"
#include "tavi/math/templates/setupscan.h"
#include "tavi/math/templates/templateaccelerator.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

using Grammar = TemplateTable::SetupGrammar;

namespace {

// The file is fed to the parser in blocks of this size; a shorter block is the last one.
constexpr std::size_t block_size = 512;

// The binding strength of a template whose setup gives none: it never needs parentheses.
constexpr int no_parens_prio = 2147483647;

// expat hands over names and values in UTF-8; the table works on wide text.
void XMLCALL on_start(void *user, XML_Char const *name, XML_Char const **atts)
{
    std::vector<wstring> texts;
    for (std::size_t i = 0; atts != nullptr && atts[i] != nullptr; ++i)
        texts.push_back(Kxt::to_ustring(atts[i]));
    std::vector<wchar const *> pointers;
    pointers.reserve(texts.size());
    for (wstring const &text : texts)
        pointers.push_back(text.c_str());
    static_cast<TemplateTable *>(user)->setup_start_element(name, pointers.data(), pointers.size());
}

void XMLCALL on_end(void *user, XML_Char const *name)
{
    static_cast<TemplateTable *>(user)->setup_end_element(name);
}

// Text between elements is of no interest; it is converted only while a token element collects it.
void XMLCALL on_text(void *user, XML_Char const *text, int length)
{
    auto *table = static_cast<TemplateTable *>(user);
    if (!table->setup_need_character_data())
        return;
    wstring const wide = Kxt::to_ustring(text, length > 0 ? static_cast<std::size_t>(length) : 0);
    table->setup_character_data(wide.c_str());
}

// The value of the first attribute of this name; null when there is none (or its value is null).
wchar const *attribute_value(wchar const *name, wchar const **attrs, std::size_t count)
{
    if (name == nullptr || attrs == nullptr)
        return nullptr;
    for (std::size_t i = 0; i + 1 < count; i += 2)
        if (attrs[i] != nullptr && wstring(attrs[i]) == name)
            return attrs[i + 1];
    return nullptr;
}

bool is_one_of(wstring const &value, wchar const *a, wchar const *b) { return value == a || value == b; }

// The export patterns of content and changecontent (docs/setup-export.md). A reader of the plain
// grammar looks up only the attributes it knows, so these pass it by unnoticed. A pattern given, and
// not empty, replaces the template's own.
void read_export_patterns(Grammar::Element const &e, MathTemplate &templ)
{
    struct Attribute
    {
        wchar const *name;
        MathTemplate::ExportFormat format;
    };
    static constexpr Attribute attributes[] = {
        // name      format
        {u"latex",  MathTemplate::export_latex},
        {u"mathml", MathTemplate::export_mathml},
        {u"cmml",   MathTemplate::export_cmml},
    };
    for (Attribute const &a : attributes) {
        wstring const pattern = e.text(a.name, u"");
        if (!pattern.empty())
            templ.export_pattern(a.format, pattern);
    }
}

// --- mathsetup: a content element must not be open around it.

void check_no_template(TemplateTable &t)
{
    if (Grammar::current_template(t) != nullptr)
        t.parse_err();
}

void mathsetup_start(Grammar::Element const &e) { check_no_template(e.table); }

// --- content: a new template of the given name. The numbers are checked against each other, and a
// faulty one falls back to a harmless value so the rest of the file still makes sense.

// arity: "2*" is two or more operands.
void read_arity(Grammar::Element const &e, long &arity, bool &varying)
{
    wstring const text = e.text(u"arity", u"0", true);
    varying = text.find(u'*') != wstring::npos;
    if (!scan_setup_long(text.c_str(), arity) || arity < 0) {
        e.table.parse_err();
        arity = 0;
    }
}

// dummies: as many placeholders as operands, unless a varying count asks for more.
long read_dummies(Grammar::Element const &e, long arity, bool varying)
{
    wstring const text = e.text(u"dummies", u"");
    if (text.empty())
        return arity;
    long dummies = 0;
    if (!scan_setup_long(text.c_str(), dummies) || dummies < arity || (dummies != arity && !varying)) {
        e.table.parse_err();
        return arity;
    }
    return dummies;
}

// flatten-seq: the child range "from, to".
bool read_flatten_seq(Grammar::Element const &e, long &from, long &to)
{
    from = 0;
    to = 0;
    wstring const text = e.text(u"flatten-seq", u"");
    if (text.empty())
        return false;
    if (!scan_setup_long_pair(text.c_str(), from, to)) {
        e.table.parse_err();
        from = 0;
        to = 0;
        return false;
    }
    return true;
}

// prio: a binding strength of 0 or more.
double read_priority(Grammar::Element const &e)
{
    wstring const text = e.text(u"prio", u"");
    if (text.empty())
        return static_cast<double>(no_parens_prio);
    int prio = 0;
    if (!scan_setup_int(text.c_str(), prio) || prio < 0) {
        e.table.parse_err();
        return 0.0;
    }
    return static_cast<double>(prio);
}

void content_start(Grammar::Element const &e)
{
    TemplateTable &t = e.table;
    // A content element inside another is refused, and takes the open one with it.
    if (Grammar::current_template(t) != nullptr) {
        t.parse_err();
        Grammar::drop_current_template(t);
    }

    wstring const id = e.text(u"id", u"", true);
    wstring const keyword = t.find_attr(wstring(u"keywd"), e.attrs, e.count, id, false);
    bool const enter = e.flag(u"enter", true);
    TemplateAccelerator accel;
    if (!accel.parse(e.text(u"accel", u"").c_str()))
        t.parse_err();

    long arity = 0;
    bool varying = false;
    read_arity(e, arity, varying);
    long const dummies = read_dummies(e, arity, varying);
    bool const assoc = e.flag(u"assoc", arity == 2 && varying);
    bool const flatten_last = e.flag(u"flatten-last", arity == 1 || arity == 2);
    long from = 0;
    long to = 0;
    bool const flatten_seq = read_flatten_seq(e, from, to);
    double const priority = read_priority(e);

    MathTemplate *templ = new MathTemplate(&t, id.c_str(), enter, keyword.c_str(), accel,
                                           static_cast<std::size_t>(arity), varying,
                                           static_cast<std::size_t>(dummies), assoc, flatten_last,
                                           flatten_seq, from, to, priority);
    templ->ref();
    read_export_patterns(e, *templ);
    Grammar::current_template(t) = templ;
}

// A template of the same name that the setup file made before is replaced in its slot; one of the
// built-in classes cannot be, since its nodes need the code of that class.
void content_end(TemplateTable &t)
{
    MathTemplate *templ = Grammar::current_template(t);
    if (templ == nullptr) {
        t.parse_err();
        return;
    }
    std::size_t const slot = t.find_template(templ->type_name());
    if (slot == TemplateTable::npos)
        t.add_template(templ);
    else if (MathTemplate const &present = *t.template_at(slot); typeid(present) == typeid(MathTemplate))
        t.replace_template(slot, templ);
    else
        t.parse_err();
    Grammar::drop_current_template(t);
}

// --- changecontent: adjusts a template that exists, built-in ones included. Only the attributes
// given (and not empty) change anything.
void changecontent_start(Grammar::Element const &e)
{
    TemplateTable &t = e.table;
    if (Grammar::current_template(t) != nullptr) {
        t.parse_err();
        Grammar::drop_current_template(t);
    }
    wstring const id = e.text(u"id", u"", true);
    MathTemplate *templ = t.get_template(id.c_str());
    if (templ == nullptr) {
        t.parse_err();
        return;
    }

    wstring const keyword = e.text(u"keywd", u"");
    if (!keyword.empty())
        templ->keyword(keyword);

    wstring const accel_text = e.text(u"accel", u"");
    if (!accel_text.empty()) {
        TemplateAccelerator accel;
        if (accel.parse(accel_text.c_str()))
            templ->accelerator(accel);
        else
            t.parse_err();
    }

    wstring const enter = e.text(u"enter", u"");
    if (!enter.empty()) {
        if (is_one_of(enter, u"1", u"true"))
            templ->can_enter(true);
        else if (is_one_of(enter, u"0", u"false"))
            templ->can_enter(false);
        else
            t.parse_err();
    }

    wstring const prio_text = e.text(u"prio", u"");
    if (!prio_text.empty()) {
        int prio = 0;
        if (scan_setup_int(prio_text.c_str(), prio) && prio >= 0)
            templ->priority(static_cast<double>(prio));
        else
            t.parse_err();
    }
    read_export_patterns(e, *templ);
}

// --- layout: holds one layout expression, which goes to the open template.

void layout_start(Grammar::Element const &e)
{
    if (Grammar::current_template(e.table) == nullptr)
        e.table.parse_err();
}

// On a fault the stack stays as it is, so every later layout of the file fails too.
void layout_end(TemplateTable &t)
{
    std::vector<MathLayout *> &stack = Grammar::stack(t);
    MathTemplate *templ = Grammar::current_template(t);
    if (stack.size() != 1 || templ == nullptr) {
        t.parse_err();
        return;
    }
    MathLayout *layout = Grammar::pop(t);
    templ->layout(layout);
    Grammar::release(layout);
}

Grammar::Rule const document_rules[] = {
    // element           start                end
    {"mathsetup",       mathsetup_start,     check_no_template},
    {"content",         content_start,       content_end},
    {"changecontent",   changecontent_start, check_no_template},
    {"layout",          layout_start,        layout_end},
};

}  // namespace

Grammar::Rule const *Grammar::document_rule(char const *name)
{
    for (Rule const &rule : document_rules)
        if (std::strcmp(rule.name, name) == 0)
            return &rule;
    return nullptr;
}

void Grammar::push(TemplateTable &t, MathLayout *layout)
{
    layout->ref();
    t.layout_stack_.push_back(layout);
}

MathLayout *Grammar::pop(TemplateTable &t)
{
    MathLayout *layout = t.layout_stack_.back();
    t.layout_stack_.pop_back();
    return layout;
}

void Grammar::release(MathLayout *layout)
{
    if (layout)
        layout->unref();
}

void Grammar::drop_current_template(TemplateTable &t)
{
    if (t.current_template_ != nullptr)
        t.current_template_->unref();
    t.current_template_ = nullptr;
}

bool TemplateTable::init(Kxt::KTstream &stream)
{
    XML_Parser parser = XML_ParserCreate(nullptr);
    if (parser == nullptr)
        return false;
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, on_start, on_end);
    XML_SetCharacterDataHandler(parser, on_text);

    mo_form_ = LayoutOp::infix;
    need_character_data_ = false;
    parse_error_ = false;

    // A block of exactly the full size may still be followed by more, so only a short read (an empty
    // one included) ends the document.
    char block[block_size];
    for (;;) {
        std::size_t got = 0;
        if (stream.read(block, block_size, got) != Kxt::KTstream::Ok || got > block_size) {
            parse_err();
            break;
        }
        bool const last = got < block_size;
        if (XML_Parse(parser, block, static_cast<int>(got), last ? 1 : 0) == XML_STATUS_ERROR) {
            parse_err();
            break;
        }
        if (last)
            break;
    }

    if (setup_cleanup())
        parse_err();
    XML_ParserFree(parser);
    return !parse_error_;
}

bool TemplateTable::setup_cleanup()
{
    character_data_.reset();
    need_character_data_ = false;
    bool unfinished = false;
    if (current_template_ != nullptr) {
        unfinished = true;
        SetupGrammar::drop_current_template(*this);
    }
    if (!layout_stack_.empty()) {
        unfinished = true;
        for (MathLayout *layout : layout_stack_)
            layout->unref();
        layout_stack_.clear();
    }
    if (!row_start_stack_.empty()) {
        unfinished = true;
        row_start_stack_.clear();
    }
    return unfinished;
}

void TemplateTable::setup_start_element(char const *name, wchar const **attrs, std::size_t count)
{
    SetupGrammar::Rule const *rule = name != nullptr ? SetupGrammar::document_rule(name) : nullptr;
    if (rule == nullptr && name != nullptr)
        rule = SetupGrammar::layout_rule(name);
    if (rule == nullptr) {
        parse_err();
        return;
    }
    if (rule->start)
        rule->start(SetupGrammar::Element{*this, attrs, count});
}

// Text is collected only directly inside a token element: whatever ends, the collection stops.
void TemplateTable::setup_end_element(char const *name)
{
    SetupGrammar::Rule const *rule = name != nullptr ? SetupGrammar::document_rule(name) : nullptr;
    if (rule == nullptr && name != nullptr)
        rule = SetupGrammar::layout_rule(name);
    if (rule == nullptr)
        parse_err();
    else if (rule->end)
        rule->end(*this);
    need_character_data_ = false;
    character_data_.reset();
}

void TemplateTable::setup_character_data(wchar const *text)
{
    if (text == nullptr) {
        parse_err();
        return;
    }
    if (!character_data_)
        character_data_.reset(new wstring);
    character_data_->append(text);
}

bool TemplateTable::find_attr(wchar const *name, wchar const **attrs, std::size_t count, bool def, bool required)
{
    wchar const *value = attribute_value(name, attrs, count);
    if (value == nullptr) {
        if (required)
            parse_err();
        return def;
    }
    wstring const text(value);
    if (is_one_of(text, u"1", u"true"))
        return true;
    if (!is_one_of(text, u"0", u"false"))
        parse_err();
    return false;
}

bool TemplateTable::find_attr(wstring const &name, wchar const **attrs, std::size_t count, bool def, bool required)
{
    return find_attr(name.c_str(), attrs, count, def, required);
}

wstring TemplateTable::find_attr(wchar const *name, wchar const **attrs, std::size_t count, wchar const *def,
                                 bool required)
{
    wchar const *value = attribute_value(name, attrs, count);
    if (value != nullptr)
        return value;
    if (required)
        parse_err();
    return def != nullptr ? wstring(def) : wstring();
}

wstring TemplateTable::find_attr(wstring const &name, wchar const **attrs, std::size_t count, wstring const &def,
                                 bool required)
{
    return find_attr(name.c_str(), attrs, count, def.c_str(), required);
}

}  // namespace Tavi
