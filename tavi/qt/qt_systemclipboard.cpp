// Qt_SystemClipboard: data sources written into QMimeData, and the system clipboard's data read back in
// the library's formats.
#include "tavi/qt/qt_systemclipboard.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QString>

#include "tavi/export/latexwriter.h"
#include "tavi/export/mathmlwriter.h"
#include "tavi/import/importer.h"
#include "tavi/interchange/datasource.h"
#include "tavi/interchange/lineartext.h"
#include "tavi/qt/qt_hostingframe.h"

namespace Tavi {

namespace {

// The clipboard needs a GUI application; a program without one has none.
QClipboard *system_clipboard()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr ? QGuiApplication::clipboard()
                                                                                   : nullptr;
}

bool is_plain_text(wstring const &format) { return format == plain_text_format; }

QString mime_name(wstring const &format) { return QString::fromStdU16String(format); }

// Text as the data sources write it: 16-bit units, with all of the terminator, part of it or none.
QString text_of(Kxt::KTmemoryStream const &stream)
{
    std::size_t const units = stream.length() / sizeof(wchar);
    wstring text(units, u'\0');
    if (units > 0)
        std::memcpy(&text[0], stream.data(), units * sizeof(wchar));
    text.resize(std::min(text.find(u'\0'), units));
    return QString::fromStdU16String(text);
}

bool is_math_format(wstring const &format) { return format == math_edit_content_format; }

// Plain text that is meant as a formula rather than a word: it has a sign that only formulas use.
// ("12" and "x" stay a number and an identifier, "hello" a string.)
bool looks_like_formula(std::string const &text)
{
    return text.find_first_of("\\^_{}=+*/<>()|") != std::string::npos;
}

bool write_all(Kxt::KTstream &stream, void const *data, std::size_t size)
{
    std::size_t written = 0;
    return stream.write(data, size, written) == Kxt::KTstream::Ok && written == size;
}

}  // namespace

std::size_t Qt_SystemClipboard::provides(wchar const *const *formats, std::size_t count) const
{
    asked_.clear();
    for (std::size_t i = 0; i < count; ++i)
        asked_.push_back(formats[i] != nullptr ? formats[i] : u"");
    QClipboard *clipboard = system_clipboard();
    QMimeData const *mime = clipboard != nullptr ? clipboard->mimeData() : nullptr;
    if (mime == nullptr)
        return 0;
    std::string content;
    for (std::size_t i = 0; i < asked_.size(); ++i) {
        bool const held = is_plain_text(asked_[i])   ? mime->hasText()
                          : is_math_format(asked_[i]) ? formula_content(content)
                                                      : mime->hasFormat(mime_name(asked_[i]));
        if (held)
            return i + 1;
    }
    return 0;
}

bool Qt_SystemClipboard::formula_content(std::string &content) const
{
    QClipboard *clipboard = system_clipboard();
    QMimeData const *mime = clipboard != nullptr ? clipboard->mimeData() : nullptr;
    if (mime == nullptr)
        return false;
    QString const own = mime_name(math_edit_content_format);
    if (mime->hasFormat(own)) {
        content = mime->data(own).toStdString();
        return true;
    }
    if (import_table_ == nullptr)
        return false;
    // Each form the clipboard holds, best first; one that does not import gives way to the next.
    struct Offer
    {
        FormulaLanguage language;
        std::string text;
    };
    std::vector<Offer> offers;
    if (mime->hasFormat(QStringLiteral("application/mathml+xml")))
        offers.push_back({FormulaLanguage::mathml, mime->data(QStringLiteral("application/mathml+xml")).toStdString()});
    if (mime->hasFormat(QStringLiteral("text/x-latex")))
        offers.push_back({FormulaLanguage::latex, mime->data(QStringLiteral("text/x-latex")).toStdString()});
    if (mime->hasText()) {
        std::string const text = mime->text().toStdString();
        FormulaLanguage const language = guess_language(text);
        if (language != FormulaLanguage::latex || looks_like_formula(text))
            offers.push_back({language, text});
    }
    for (Offer const &offer : offers) {
        try {
            content = to_content(offer.language, offer.text, *import_table_);
            return true;
        } catch (ImportError const &) {
        }
    }
    return false;
}

bool Qt_SystemClipboard::get_data(int index, Kxt::KTstream &stream)
{
    if (index < 1 || static_cast<std::size_t>(index) > asked_.size())
        return false;
    wstring const &format = asked_[static_cast<std::size_t>(index) - 1];
    QClipboard *clipboard = system_clipboard();
    QMimeData const *mime = clipboard != nullptr ? clipboard->mimeData() : nullptr;
    if (mime == nullptr)
        return false;
    if (is_plain_text(format)) {
        if (!mime->hasText())
            return false;
        // As TextSource writes it: the units and the terminator.
        std::u16string const text = mime->text().toStdU16String();
        return write_all(stream, text.c_str(), (text.size() + 1) * sizeof(wchar));
    }
    if (is_math_format(format)) {
        std::string content;
        return formula_content(content) && write_all(stream, content.data(), content.size());
    }
    QString const name = mime_name(format);
    if (!mime->hasFormat(name))
        return false;
    QByteArray const bytes = mime->data(name);
    return write_all(stream, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void Qt_SystemClipboard::data(DataSource *source)
{
    std::unique_ptr<DataSource> const owned(source);
    QClipboard *clipboard = system_clipboard();
    if (clipboard == nullptr)
        return;
    if (source == nullptr) {
        clipboard->clear();
        return;
    }
    // Every format is written now: the system clipboard keeps bytes, not the source, and so the
    // copy no longer depends on the document it came from.
    auto mime = std::make_unique<QMimeData>();
    for (std::size_t i = 0; wchar const *format = source->format(i); ++i) {
        Kxt::KTheapStream stream(512, 512);
        if (!source->serialize(i, stream))
            continue;
        if (is_plain_text(format)) {
            mime->setText(text_of(stream));
            continue;
        }
        auto const *bytes = reinterpret_cast<char const *>(stream.data());
        mime->setData(mime_name(format), QByteArray(bytes, static_cast<qsizetype>(stream.length())));
    }
    if (auto *math = dynamic_cast<MathNodeDataSource *>(source); math != nullptr && math->node() != nullptr) {
        // A formula without a text form of its own still reads as text elsewhere.
        if (!mime->hasText())
            mime->setText(QString::fromStdU16String(linear_text(math->node())));
        // Programs that know formulas take them as MathML or LaTeX.
        MathNode *node = math->node();
        mime->setData(QStringLiteral("application/mathml+xml"), QByteArray::fromStdString(write_mathml(node)));
        mime->setData(QStringLiteral("text/x-latex"), QByteArray::fromStdString(write_latex(node)));
    }
    clipboard->setMimeData(mime.release());
}

Qt_SystemClipboard &Qt_SystemClipboard::instance()
{
    static Qt_SystemClipboard clipboard;
    return clipboard;
}

Qt_HostingFrame &install_system_clipboard()
{
    static Qt_HostingFrame frame(Qt_SystemClipboard::instance());
    HostingFrame::install(&frame);
    return frame;
}

}  // namespace Tavi
