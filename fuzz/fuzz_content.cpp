// Fuzzing the content reader: any bytes as a document. A document that reads is also typeset (on one
// line and broken to a narrow width) and drawn, written back, read again and written again; the second
// writing must equal the first. Anything else must end in the reader's refusal, never in a crash.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "fuzz/fuzz_host.h"
#include "tavi/editing/formulascene.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/math/mathrootnode.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    TaviFuzz::quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    static Tavi::FormulaScene &scene = TaviFuzz::default_scene();
    std::string const document(reinterpret_cast<char const *>(data), size);
    try {
        if (!scene.read_content(document))
            return 0;
    } catch (Tavi::BadMathEditContent const &) {
        return 0;
    }
    TaviFuzz::typeset(scene);
    std::string const first = scene.content();
    try {
        if (!scene.read_content(first))
            std::abort();
    } catch (Tavi::BadMathEditContent const &) {
        std::abort();  // what was written must read
    }
    if (scene.content() != first)
        std::abort();
    return 0;
}
