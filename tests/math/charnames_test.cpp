// Character names: every name resolves, in the numbering and with the meaning that the name list
// gives; the way back writes one name per family of aliases and reads back the same code;
// unknown and over-long names are refused; the index is built once even when several threads ask
// for it first.
#include "tavi/math/charnames.h"
#include "tavi/kxt/utf.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace Tavi;

namespace {

// The 427 names in the order of their numbers, as the name list gives them.
char const name_list[] =
    "or, rarr, rpar, ap, prop, para, darr, I, amp, part, pm, Iota, dot, perp, Im, eta, prod, Kappa, "
    "ast, tdot, dd, apos, sdot, iota, ee, cap, dots, Re, larr, trade, lpar, asymp, uarr, lt, cdot, "
    "comma, pi, sim, diam, coprod, cir, zeta, euro, commat, die, Beta, prime, period, sup, Wopf, "
    "micro, middot, le, psi, sect, spades, copy, Iopf, diams, rfloor, sum, Kopf, delta, ii, true, "
    "times, otimes, not, epsi, Gamma, cup, Ropf, semi, bot, supe, Sum, Yopf, Space, and, Sopf, ne, "
    "Mopf, dollar, Pi, real, supset, mu, tau, beta, radic, Bopf, bottom, int, oint, Prime, wp, loz, "
    "Copf, tilde, Psi, Popf, Xi, Dot, upsi, false, lfloor, plus, oplus, iff, circ, frac14, Gopf, Mu, "
    "cent, Implies, Xopf, kappa, percnt, Superset, Uopf, frac34, gt, num, Upsi, permil, spadesuit, "
    "alefsym, uml, ouml, rbrace, diamond, auml, pound, bprime, percent, Coproduct, rArr, gamma, "
    "lambda, ge, Lopf, omega, centerdot, Zeta, rceil, diamondsuit, Hat, dArr, Eta, Qopf, xodot, "
    "forall, sup1, weierp, nu, sube, in, nbsp, Dopf, Delta, yen, Nopf, Wedge, lowast, bsol, sigma, "
    "subset, xcap, minus, Fopf, setmn, lbrace, sup3, vprop, uuml, image, lArr, Lambda, xi, "
    "varpropto, Sigma, Subset, uArr, Zopf, lceil, MediumSpace, vert, nabla, Nu, Del, leftarrow, "
    "exist, UnderBar, Uuml, xotime, isin, D, omicron, Hopf, conint, setminus, Aopf, vee, Eopf, "
    "colon, compfn, sub, Epsi, SupersetEqual, Jopf, xcup, SmallCircle, Oopf, clubs, rho, Sqrt, "
    "Colon, lowbar, harr, sup2, varpi, bullet, rcub, sigmaf, And, raquo, epsilon, ohm, Leftarrow, "
    "notin, Rho, quot, rdquo, rdquor, nsubset, sharp, rsquo, rsquor, bigodot, bull, ImaginaryI, "
    "plusmn, theta, xoplus, reg, CenterDot, Vert, CirclePlus, there4, angle, rangle, excl, bigcap, "
    "deg, CircleDot, verbar, Topf, quest, dagger, upsilon, hearts, divide, Vee, lcub, wedge, alpha, "
    "backprime, laquo, phi, Uparrow, NIL, frac12, Auml, pvint, approx, nsub, ldquo, ldquor, lsquo, "
    "lsquor, Upsilon, LeftFloor, iexcl, bigotimes, infin, E, Ouml, iquest, Intersection, NotSubset, "
    "amalg, thetasym, PrincipalValueIntegral, Tau, Vopf, Union, xuplus, therefore, langle, Element, "
    "Integral, horbar, Omega, chi, lozenge, Tilde, bigcup, DD, UpTee, ang, rang, equals, Chi, bdquo, "
    "Phi, sbquo, CloseCurlyDoubleQuote, GreaterEqual, Verbar, half, brvbar, PartialD, PlusMinus, "
    "heartsuit, rbrack, NotElement, bigoplus, cong, varepsilon, xvee, varsigma, hellip, rsqb, "
    "ContourIntegral, Exists, lang, szlig, CloseCurlyQuote, Tab, Dagger, Omicron, hArr, Epsilon, "
    "Congruent, piv, UnionPlus, lbrack, div, LeftArrow, CapitalDifferentialD, ForAll, Downarrow, "
    "OverBar, biguplus, DoubleDot, emptyv, lsqb, epsiv, xwedge, CircleTimes, Alpha, NULL, blank, "
    "xsqcup, UpArrow, leq, vartheta, FAIL, bigvee, DifferentialD, OpenCurlyQuote, "
    "OpenCurlyDoubleQuote, InvisibleComma, Theta, straightphi, varphi, DoubleUpArrow, vnsub, Equal, "
    "supseteq, isinv, mdash, Backslash, rightarrow, InvisibleTimes, NotANumber, Therefore, bigwedge, "
    "LeftCeiling, Rightarrow, geq, aleph, bigsqcup, ldsh, NonBreakingSpace, sigmav, "
    "LeftAngleBracket, DownArrow, DoubleLeftRightArrow, upsih, ApplyFunction, ndash, RightFloor, "
    "SquareUnion, subseteq, leftrightarrow, NotEqual, TildeTilde, DoubleRightArrow, thetav, phiv, "
    "SubsetEqual, Leftrightarrow, equiv, hyphen, varnothing, LeftRightArrow, DoubleLeftArrow, "
    "DoubleDownArrow, RightArrow, ThickSpace, UNKNOWN, cauchypv, TildeFullEqual, RightAngleBracket, "
    "ExponentialE, RightCeiling";

std::vector<std::string> all_names()
{
    std::vector<std::string> names;
    std::string list = name_list;
    for (std::size_t start = 0; start < list.size();) {
        std::size_t end = list.find(", ", start);
        if (end == std::string::npos)
            end = list.size();
        names.push_back(list.substr(start, end - start));
        start = end + 2;
    }
    return names;
}

// The names of the text table, with their texts: every other name is one character.
std::map<std::string, std::pair<int, wstring>> const text_names = {
    {"ApplyFunction", {1, u""}},   {"InvisibleComma", {1, u""}}, {"InvisibleTimes", {1, u""}},
    {"Colon", {2, u"::"}},         {"false", {1, u"false"}},     {"true", {1, u"true"}},
    {"NotANumber", {1, u"NaN"}},   {"Tab", {1, u"    "}},        {"UNKNOWN", {1, u"unknown"}},
    {"NIL", {1, u"Nil"}},          {"FAIL", {1, u"Fail"}},       {"NULL", {1, u"Null"}},
    {"Re", {1, u"Re"}},
};

struct CodeCase
{
    char const *name;
    int font;
    unsigned code;
};

// Codes worked out from the sources of each class. Symbol codes of the upper half are 65280 plus
// the byte of the Adobe Symbol encoding.
CodeCase const code_cases[] = {
    {"Alpha", 1, 913},       // U+0391
    {"alpha", 2, 97},        // Symbol 0x61
    {"aleph", 2, 65472},     // Symbol 0xC0: 65280 + 192
    {"amalg", 3, 96},        // the text-size coproduct
    {"ii", 1, 8520},         // U+2148
    {"Aopf", 4, 65},         // 'A'
    {"lpar", 3, 40},         // normal-size fences stand at their ASCII codes
    {"Hat", 3, 98},          // cmex10 0x62, the smallest wide hat
    // The characters that identifiers read as accents.
    {"dot", 1, 46},
    {"prime", 2, 65442},     // Symbol 0xA2: 65280 + 162
    {"OverBar", 3, 197},
    // The operators of the stretching and display layouts are named by their normal character.
    {"Sum", 3, 80}, {"PrincipalValueIntegral", 3, 127}, {"LeftCeiling", 3, 205}, {"Sqrt", 3, 213},
};

NamedChar find_or_fail(std::string const &name)
{
    NamedChar found{MathString::f_upright, nullptr, 0};
    wstring wide = Kxt::to_ustring(name);
    EXPECT_TRUE(CharNames::find(wide.c_str(), found)) << name;
    return found;
}

}  // namespace

TEST(CharNames, EveryNameHasItsNumberAndMeaning)
{
    std::vector<std::string> const names = all_names();
    ASSERT_EQ(names.size(), 427u);
    for (std::size_t number = 0; number < names.size(); ++number) {
        std::string const &name = names[number];
        EXPECT_EQ(CharNames::lookup(name.c_str(), name.size()), int(number)) << name;
        char const *back = CharNames::name(int(number));
        ASSERT_NE(back, nullptr) << number;
        EXPECT_EQ(std::string(back), name);

        NamedChar found = find_or_fail(name);
        auto text = text_names.find(name);
        if (text == text_names.end()) {
            EXPECT_EQ(found.length, 1u) << name;
        } else {
            EXPECT_EQ(int(found.font), text->second.first) << name;
            EXPECT_EQ(wstring(found.text, found.length), text->second.second) << name;
        }
    }
    EXPECT_EQ(CharNames::name(-1), nullptr);
    EXPECT_EQ(CharNames::name(427), nullptr);
}

TEST(CharNames, CodesFollowTheirSources)
{
    auto check = [](CodeCase const &c) {
        NamedChar found = find_or_fail(c.name);
        ASSERT_NE(found.text, nullptr) << c.name;
        EXPECT_EQ(int(found.font), c.font) << c.name;
        EXPECT_EQ(unsigned(found.text[0]), c.code) << c.name;
    };
    for (CodeCase const &c : code_cases)
        check(c);
}

TEST(CharNames, EachFamilyWritesOneNameThatReadsBack)
{
    // Family of each single character: its class and code, and the names that share them.
    std::map<std::pair<int, unsigned>, std::set<std::string>> families;
    for (std::string const &name : all_names()) {
        if (text_names.count(name) != 0)
            continue;
        NamedChar found = find_or_fail(name);
        families[{int(found.font), unsigned(found.text[0])}].insert(name);
    }
    std::string const plain = "()/[\\]{|}";
    for (auto const &family : families) {
        auto font = MathString::Font(family.first.first);
        wchar code = wchar(family.first.second);
        wstring written = CharNames::entity(font, code);
        if (font == MathString::f_extension && code < 128 && plain.find(char(code)) != std::string::npos) {
            EXPECT_EQ(written, wstring(1, code));
            continue;
        }
        ASSERT_GE(written.size(), 3u) << family.first.first << "/" << family.first.second;
        ASSERT_EQ(written.front(), u'&');
        ASSERT_EQ(written.back(), u';');
        std::string preferred = Kxt::to_string(written.substr(1, written.size() - 2));
        // The written name is one of the family, and it and every alias read back the same code.
        EXPECT_EQ(family.second.count(preferred), 1u) << preferred;
        NamedChar back = find_or_fail(preferred);
        EXPECT_EQ(int(back.font), family.first.first) << preferred;
        EXPECT_EQ(unsigned(back.text[0]), family.first.second) << preferred;
    }

    // The preferred names where a family has several, and the edge case of code 97 in class 2.
    struct Written
    {
        int font;
        wchar code;
        char16_t const *entity;
    };
    Written const written_cases[] = {
        {2, 97, u"&alpha;"}, {2, 0xFFDB, u"&hArr;"}, {3, 80, u"&Sum;"}, {3, 213, u"&Sqrt;"}, {4, 'R', u"&Ropf;"},
    };
    for (Written const &w : written_cases)
        EXPECT_EQ(CharNames::entity(MathString::Font(w.font), w.code), wstring(w.entity));
}

TEST(CharNames, UnknownAndOverlongNamesAreRefused)
{
    std::vector<wstring> const refused = {
        u"", u"alph", u"alphaa", u"ALPHA", u"&alpha;", u"PrincipalValueIntegrals", wstring(128, u'a'),
        wstring(u"alpha\0", 6),
    };
    for (wstring const &name : refused) {
        NamedChar found{MathString::f_upright, nullptr, 7};
        EXPECT_FALSE(CharNames::find(name.data(), name.size(), found)) << Kxt::to_string(name);
        EXPECT_EQ(found.text, nullptr);
        EXPECT_EQ(found.length, 7u);
    }
    NamedChar found{};
    EXPECT_FALSE(CharNames::find(nullptr, found));
    EXPECT_FALSE(CharNames::find(nullptr, 5, found));
    // A terminated name of 128 characters is refused, though its first 22 would be a name's length.
    wstring long_name = u"alpha" + wstring(123, u'x');
    EXPECT_FALSE(CharNames::find(long_name.c_str(), found));
    EXPECT_EQ(CharNames::lookup("alpha", 4), -1);  // "alph"
    EXPECT_EQ(CharNames::lookup("\xff\xfe", 2), -1);
}

TEST(CharNameIndex, IsBuiltOnceWhenManyThreadsAskFirst)
{
    CharNameIndex index;
    NamedChar unused{};
    EXPECT_FALSE(index.meaning(-1, unused));
    EXPECT_FALSE(index.meaning(427, unused));
    EXPECT_EQ(index.build_count(), 0);

    constexpr int thread_count = 8;
    std::atomic<int> waiting{thread_count};
    std::vector<std::vector<NamedChar>> seen(thread_count, std::vector<NamedChar>(427));
    std::vector<std::thread> threads;
    for (int t = 0; t < thread_count; ++t) {
        threads.emplace_back([&, t] {
            // All threads start together, so that several find the index unbuilt.
            waiting.fetch_sub(1);
            while (waiting.load() > 0)
                std::this_thread::yield();
            for (int number = 0; number < 427; ++number)
                EXPECT_TRUE(index.meaning(number, seen[t][number]));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(index.build_count(), 1);

    NamedChar shared{};
    for (int number = 0; number < 427; ++number) {
        ASSERT_TRUE(CharNameIndex::shared().meaning(number, shared));
        for (int t = 0; t < thread_count; ++t) {
            EXPECT_EQ(seen[t][number].font, shared.font);
            EXPECT_EQ(seen[t][number].text, shared.text);
            EXPECT_EQ(seen[t][number].length, shared.length);
        }
    }
    EXPECT_EQ(CharNameIndex::shared().build_count(), 1);
}
