// Color: four bytes, red, green, blue and alpha (255 opaque). Equality and order look at the three
// colour channels only, so two colours that differ in alpha alone count as the same colour.
#pragma once

namespace Tavi {

class Color
{
public:
    constexpr Color() : red_(0), green_(0), blue_(0), alpha_(255) {}
    constexpr Color(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha = 255)
        : red_(red), green_(green), blue_(blue), alpha_(alpha)
    {
    }

    unsigned char red() const { return red_; }
    void red(unsigned char v) { red_ = v; }
    unsigned char green() const { return green_; }
    void green(unsigned char v) { green_ = v; }
    unsigned char blue() const { return blue_; }
    void blue(unsigned char v) { blue_ = v; }
    unsigned char alpha() const { return alpha_; }
    void alpha(unsigned char v) { alpha_ = v; }

    void rgb(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha = 255)
    {
        red_ = red;
        green_ = green;
        blue_ = blue;
        alpha_ = alpha;
    }
    // The three colour channels take the value; alpha stays.
    void gray(unsigned char value) { red_ = green_ = blue_ = value; }

    static Color const black;
    static Color const white;

private:
    unsigned char red_;
    unsigned char green_;
    unsigned char blue_;
    unsigned char alpha_;
};

inline const Color Color::black{0, 0, 0, 255};
inline const Color Color::white{255, 255, 255, 255};

// Alpha plays no part.
inline bool operator==(Color const &a, Color const &b)
{
    return a.red() == b.red() && a.green() == b.green() && a.blue() == b.blue();
}
inline bool operator!=(Color const &a, Color const &b) { return !(a == b); }
inline bool operator<(Color const &a, Color const &b)
{
    if (a.red() != b.red())
        return a.red() < b.red();
    if (a.green() != b.green())
        return a.green() < b.green();
    return a.blue() < b.blue();
}

}  // namespace Tavi
