#pragma once

#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace Host {

// A content stream, as it is written.
class ContentText {
public:
    // With up to four decimals, which are less than any device shows. Beyond a billion, which no reader takes, and for
    // what is no number, 0.
    static std::string number(double value)
    {
        constexpr double most = 1e9;
        if (!(std::abs(value) < most))
            return "0";
        constexpr std::int64_t unit = 10000;
        const std::int64_t scaled = std::llround(value * unit);
        char digits[32] = "-";
        char* end = digits + (scaled < 0 ? 1 : 0);
        end = std::to_chars(end, digits + sizeof digits, std::abs(scaled) / unit).ptr;
        if (std::int64_t fraction = std::abs(scaled) % unit) {
            *end++ = '.';
            for (std::int64_t place = unit / 10; fraction != 0; place /= 10) {
                *end++ = static_cast<char>('0' + fraction / place);
                fraction %= place;
            }
        }
        return {digits, end};
    }
    static std::string literal(std::string_view bytes)
    {
        std::string text = "(";
        for (const char byte : bytes) {
            if (byte == '(' || byte == ')' || byte == '\\')
                text += '\\';
            if (byte == '\r' || byte == '\n')
                text += byte == '\r' ? "\\r" : "\\n";
            else
                text += byte;
        }
        return text + ")";
    }
    static std::string hexadecimal(std::string_view bytes)
    {
        constexpr char digits[] = "0123456789ABCDEF";
        std::string text = "<";
        for (const char byte : bytes)
            text.append({digits[static_cast<unsigned char>(byte) >> 4], digits[byte & 15]});
        return text + ">";
    }

    // A line: operands and the operator.
    ContentText& add(std::string_view line)
    {
        _text.append(line).append("\n");
        return *this;
    }
    ContentText& add(std::initializer_list<double> operands, std::string_view operation)
    {
        for (const double operand : operands)
            _text.append(number(operand)).append(" ");
        return add(operation);
    }

    const std::string& text() const noexcept { return _text; }

private:
    std::string _text;
};

} // namespace Host
