// Fuzzing the LaTeX importer: any bytes as a LaTeX formula. The importer either refuses with ImportError
// or makes a content document that the content reader takes without a refusal and that typesets;
// anything else (a crash, another exception, content that does not read) is a finding.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz/fuzz_host.h"
#include "tavi/editing/formulascene.h"
#include "tavi/import/importer.h"
#include "tavi/interchange/matheditcontenthandler.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    TaviFuzz::quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    static Tavi::FormulaScene &scene = TaviFuzz::default_scene();
    std::string const text(reinterpret_cast<char const *>(data), size);
    std::string content;
    try {
        content = Tavi::to_content(Tavi::FormulaLanguage::latex, text, *scene.template_table());
    } catch (Tavi::ImportError const &) {
        return 0;
    }
    try {
        if (!scene.read_content(content))
            std::abort();  // what the importer made must read
    } catch (Tavi::BadMathEditContent const &) {
        std::abort();
    }
    TaviFuzz::typeset(scene);
    return 0;
}
