// Input: the key numbers, scroll commands, scroll directions and modifier bits that travel from a
// window system to views, scenes and selections. Key numbers are the Windows virtual-key codes, so
// the underlying types are fixed to int and any number can be carried, named or not.
#pragma once

namespace Tavi {
namespace Input {

enum Key : int {
    key_none = 0,
    key_backspace = 8,
    key_tab = 9,
    key_return = 13,
    key_shift = 16,
    key_control = 17,
    key_alt = 18,
    key_escape = 27,
    key_space = 32,
    key_page_up = 33,
    key_page_down = 34,
    key_end = 35,
    key_home = 36,
    key_left = 37,
    key_up = 38,
    key_right = 39,
    key_down = 40,
    key_insert = 45,
    key_delete = 46,
    key_0 = 48, key_1, key_2, key_3, key_4, key_5, key_6, key_7, key_8, key_9,
    key_a = 65, key_b, key_c, key_d, key_e, key_f, key_g, key_h, key_i, key_j, key_k, key_l, key_m,
    key_n, key_o, key_p, key_q, key_r, key_s, key_t, key_u, key_v, key_w, key_x, key_y, key_z,
    key_multiply = 106,
    key_add = 107,
    key_separator = 108,
    key_subtract = 109,
    key_decimal = 110,
    key_divide = 111,
    key_f1 = 112, key_f2, key_f3, key_f4, key_f5, key_f6, key_f7, key_f8, key_f9, key_f10, key_f11,
    key_f12,
};

// What a scroll request asks for on one axis. "Back" is toward the near edge (left or top),
// "forward" toward the far edge. Numbers above scroll_to_position move nothing.
enum ScrollCmd : int {
    scroll_none = 0,          // nothing to do
    scroll_to_start = 1,      // the near edge of the range
    scroll_to_end = 2,        // the far edge less the viewport
    scroll_line_back = 3,
    scroll_line_forward = 4,
    scroll_page_back = 5,     // half a viewport
    scroll_page_forward = 6,
    scroll_finished = 7,      // the end of a drag: nothing to do
    scroll_to_position = 8,   // the position that comes with the request
};

enum ScrollDir : int {
    scroll_horizontal = 0,
    scroll_vertical = 1,      // and any other non-zero value
};

// Bits of the modifier word.
constexpr int modifier_shift = 1;
constexpr int modifier_control = 2;

}  // namespace Input
}  // namespace Tavi
