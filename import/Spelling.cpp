#include <import/Spelling.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace Import {

namespace {

constexpr char hexDigits[] = "0123456789ABCDEF";

void addHex(std::string& text, unsigned char byte)
{
    text += hexDigits[byte >> 4];
    text += hexDigits[byte & 15];
}

// What a byte needs in a literal string.
enum class InLiteral : std::uint8_t {
    Plain,
    Escape,  // a backslash, and the letter of the table
    Bracket, // nothing, but in the trailer it can't be
    Never,
};

// Of bytes from 128 to 159 the core makes other characters, and of two backslashes none.
constexpr std::array<InLiteral, 256> literalNeeds = [] {
    std::array<InLiteral, 256> needs{};
    for (const unsigned char c : {'(', ')', '\r', '\n'})
        needs[c] = InLiteral::Escape;
    for (const unsigned char c : {'<', '>'})
        needs[c] = InLiteral::Bracket;
    needs['\\'] = InLiteral::Never;
    for (unsigned c = 128; c < 160; ++c)
        needs[c] = InLiteral::Never;
    return needs;
}();

InLiteral needOf(char c)
{
    return literalNeeds[static_cast<unsigned char>(c)];
}

bool isLiteral(std::string_view bytes, Place place)
{
    if (bytes.starts_with("\xFE\xFF"))
        return false;
    const InLiteral firstRefused = place == Place::Trailer ? InLiteral::Bracket : InLiteral::Never;
    return std::none_of(bytes.begin(), bytes.end(), [&](char c) { return needOf(c) >= firstRefused; });
}

// Whether a character of a name stands for itself.
constexpr std::array<bool, 256> isPlainInName = [] {
    std::array<bool, 256> isPlain{};
    for (unsigned c = '!'; c <= '~'; ++c)
        isPlain[c] = true;
    for (const unsigned char c : {'#', '%', '(', ')', '/', '<', '>', '[', ']', '{', '}'})
        isPlain[c] = false;
    return isPlain;
}();

// Digits of a number that the core holds whatever they are.
constexpr std::size_t alwaysHeld = 18;
constexpr std::string_view highestHeld = "9223372036854775807";

// Whether the core holds these digits as a whole number.
bool isHeld(std::string_view digits)
{
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits.size() < highestHeld.size() || (digits.size() == highestHeld.size() && digits <= highestHeld);
}

// Adds one to the number; false when it had nothing but nines and is all zeros then.
bool increment(std::string& digits)
{
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        if (*digit != '9') {
            ++*digit;
            return true;
        }
        *digit = '0';
    }
    return false;
}

// The nearest number of which the core holds both halves. `whole` is held already.
void roundToHeld(std::string& whole, std::string& fraction)
{
    const std::size_t zeros = std::min(fraction.find_first_not_of('0'), fraction.size());
    std::string kept = fraction.substr(0, zeros + highestHeld.size());
    for (;; kept.pop_back()) {
        std::string rounded = kept;
        const bool isUp = kept.size() < fraction.size() && fraction[kept.size()] >= '5';
        if (isUp && !increment(rounded)) {
            // All of it was nines.
            std::string next = "0" + whole;
            increment(next);
            fraction = isHeld(next) ? "0" : kept.substr(0, alwaysHeld);
            whole = isHeld(next) ? next.substr(next[0] == '0') : whole;
            return;
        }
        if (isHeld(rounded)) {
            fraction = rounded;
            return;
        }
    }
}

} // namespace

void spellName(std::string& text, std::string_view name)
{
    text += '/';
    for (const char c : name) {
        if (isPlainInName[static_cast<unsigned char>(c)] || c == '\0') {
            text += c == '\0' ? '#' : c;
            continue;
        }
        text += '#';
        addHex(text, static_cast<unsigned char>(c));
    }
}

void spellString(std::string& text, std::string_view bytes, Place place)
{
    const bool isHex = !isLiteral(bytes, place);
    text += isHex ? '<' : '(';
    for (const char c : bytes) {
        if (isHex) {
            addHex(text, static_cast<unsigned char>(c));
        } else if (needOf(c) == InLiteral::Escape) {
            text += '\\';
            text += c == '\r' ? 'r' : c == '\n' ? 'n' : c;
        } else {
            text += c;
        }
    }
    text += isHex ? '>' : ')';
}

Spelled spellReal(std::string& text, std::string_view token)
{
    const std::size_t point = token.find('.');
    const std::size_t sign = token.starts_with('-') || token.starts_with('+') ? 1 : 0;
    const std::string_view wholeDigits = token.substr(sign, point - sign);
    const std::string_view fractionDigits = token.substr(point + 1);
    if (isHeld(wholeDigits) && isHeld(fractionDigits)) {
        text += token;
        return Spelled::AsIs;
    }
    std::string whole(wholeDigits);
    std::string fraction(fractionDigits.substr(0, fractionDigits.find_last_not_of('0') + 1));
    const bool isExact = isHeld(whole) && isHeld(fraction);
    if (!isHeld(whole)) {
        whole = highestHeld;
        fraction = "0";
    } else if (!isExact) {
        roundToHeld(whole, fraction);
    }
    text += token.substr(0, sign);
    text += whole;
    text += '.';
    text += fraction.empty() ? "0" : fraction;
    return isExact ? Spelled::AsIs : Spelled::Rounded;
}

} // namespace Import
