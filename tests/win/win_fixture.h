// The Win_* canvas tests' fixture: a RecordingGdi installed for the test, an empty font cache, and
// contexts made on it.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "win/recording_gdi.h"
#include "win/win_fontcache.h"

namespace TaviTest {

class WinCanvasTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        before_ = Tavi::Gdi::install(nullptr);
        fresh();
    }
    void TearDown() override
    {
        Tavi::Win_FontCache::clear();
        Tavi::Gdi::install(before_);
    }
    // A new recorder and an empty font cache, for the next row of a table.
    void fresh()
    {
        Tavi::Win_FontCache::clear();
        recorder_ = std::make_unique<Tavi::RecordingGdi>();
        Tavi::Gdi::install(recorder_.get());
    }

    // A context of the given resolution, with its making forgotten.
    Tavi::Gdi::HDC context(int dpi_x = 96, int dpi_y = 96)
    {
        gdi().resolution(dpi_x, dpi_y);
        Tavi::Gdi::HDC dc = gdi().CreateCompatibleDC(nullptr);
        gdi().take();
        return dc;
    }
    // The calls since the last take that start with one of the prefixes.
    std::vector<std::string> calls(std::vector<std::string> const &prefixes = {})
    {
        std::vector<std::string> kept;
        for (std::string const &call : gdi().take()) {
            bool keep = prefixes.empty();
            for (std::string const &p : prefixes)
                keep = keep || call.compare(0, p.size(), p) == 0;
            if (keep)
                kept.push_back(call);
        }
        return kept;
    }

    Tavi::RecordingGdi &gdi() { return *recorder_; }

private:
    std::unique_ptr<Tavi::RecordingGdi> recorder_;
    Tavi::Gdi *before_ = nullptr;
};

}  // namespace TaviTest
