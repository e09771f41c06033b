// What the benchmarks work on: the default setup, the example formulas and generated polynomials in
// the content format, and the three steps of tavi-render timed one by one (reading, typesetting,
// writing SVG).
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace TaviBench {

// One formula: a name for the report and its text in the content format.
struct Formula
{
    std::string name;
    std::string text;
};

// The examples of data/examples, in name order.
std::vector<Formula> examples();

// c0 + c1 x + c2 x^2 + ... with `terms` terms: a sum of products of a number and a power.
std::string polynomial(long terms);
// 1/(1/(1/...x)): fractions each in the denominator of the one before, `depth` deep.
std::string nested_fractions(long depth);

// Loads the default setup once; false (with a message) when it cannot.
bool load_setup();

// Each step on its own, in time per formula. For the polynomial forms the argument is the number
// of terms, which is also the complexity's N.
void read(benchmark::State &state, std::string const &text);
void typeset(benchmark::State &state, std::string const &text, double wrap_points);
void write_svg(benchmark::State &state, std::string const &text);
void read_polynomial(benchmark::State &state);
void typeset_polynomial(benchmark::State &state);
void wrap_polynomial(benchmark::State &state);
void write_svg_polynomial(benchmark::State &state);
// The whole of what a host does to show a formula: read, typeset for the screen and paint on an image
// of its size.
void read_typeset_paint(benchmark::State &state, std::string const &text);
void typeset_nested_fractions(benchmark::State &state);
// Read and typeset a polynomial, and report the heap that the formula keeps per node (counter
// bytes_per_node) besides the time.
void heap_per_node(benchmark::State &state);
// One keystroke in an editor of a polynomial: arguments terms and where the caret is (0 first term,
// 1 middle, 2 last).
void keystroke(benchmark::State &state);

// The width the wrapped polynomials are broken at, in points (12 cm).
constexpr double wrap_width_points = 12.0 / 2.54 * 72.0;

}  // namespace TaviBench
