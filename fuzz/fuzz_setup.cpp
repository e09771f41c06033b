// Fuzzing the setup reader: any bytes as a setup file, read into a fresh scene's template table on top
// of the built-in templates. Whatever the reader made of it, every example formula is then read with
// that table, typeset and drawn: a fault of the setup file may refuse a formula, never crash.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_host.h"
#include "tavi/editing/formulascene.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/stream.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    TaviFuzz::quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    Tavi::FormulaScene scene;
    Kxt::KTmemoryStream stream(data, size);
    scene.template_table()->init(stream);
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
