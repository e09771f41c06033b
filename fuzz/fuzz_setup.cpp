// Fuzzing the setup reader: any bytes as a setup file, read into a fresh scene's template table on top
// of the built-in templates. A table that the reader accepts reads every example formula, which is
// then typeset and drawn: a setup file may refuse a formula, never crash. A table whose reading
// failed is refused by its host, as tavi-render does: its layouts may be short of their children.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_host.h"
#include "tavi/editing/formulascene.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/stream.h"

// A template given a second layout keeps its first as the fallback for lines too narrow, and that first
// layout is never released: it outlives the template, on purpose. Any setup file that gives a template
// two layouts leaves it behind, so leaks are not looked for here (the setup reader's tests are run
// under the leak checker).
extern "C" char const *__asan_default_options() { return "detect_leaks=0"; }

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    TaviFuzz::quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    Tavi::FormulaScene scene;
    Kxt::KTmemoryStream stream(data, size);
    if (!scene.template_table()->init(stream))
        return 0;
    for (std::string const &example : TaviFuzz::examples()) {
        try {
            if (!scene.read_content(example))
                continue;
        } catch (Tavi::BadMathEditContent const &) {
            continue;
        }
        TaviFuzz::typeset(scene);
    }
    return 0;
}
