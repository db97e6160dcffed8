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
        char digits[32];
        const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 4).ptr;
        std::string text(digits, end);
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
        return text == "-0" ? "0" : text;
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
