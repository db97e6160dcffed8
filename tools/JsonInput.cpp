#include <tools/JsonInput.h>

#include <host/base/Utf8.h>

#include <algorithm>
#include <iterator>

namespace Tools {

namespace {

using Json = nlohmann::json;

// Goes over a text and leaves behind where it is, since the parser tells that only of its own errors.
class Walk {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Walk(const char* place, const char** reached) : _place(place), _reached(reached) {}
    reference operator*() const { return *_place; }
    Walk& operator++()
    {
        *_reached = ++_place;
        return *this;
    }
    Walk operator++(int)
    {
        const Walk before = *this;
        ++*this;
        return before;
    }
    bool operator==(const Walk& other) const { return _place == other._place; }
    bool operator!=(const Walk& other) const { return _place != other._place; }

private:
    const char* _place;
    const char** _reached;
};

// Takes what the parser finds, and makes a tree of it.
class Builder {
public:
    using number_integer_t = Json::number_integer_t;
    using number_unsigned_t = Json::number_unsigned_t;
    using number_float_t = Json::number_float_t;
    using string_t = Json::string_t;
    using binary_t = Json::binary_t;

    Builder(std::string_view text, Digits digits) : _text(text), _digits(digits), _reached(text.data()) {}

    Host::Result<Json> read()
    {
        const Walk begin(_text.data(), &_reached);
        const Walk end(_text.data() + _text.size(), &_reached);
        if (Json::sax_parse(begin, end, this))
            return std::move(_root);
        return Host::Refusal{Host::Reason::WrongArgument, std::move(_fault)};
    }

    bool null() { return put(nullptr); }
    bool boolean(bool value) { return put(value); }
    // Only "-0" is a whole number that comes as an integer and has lost something.
    bool number_integer(number_integer_t value) { return number(value, value ? std::to_string(value) : "-0"); }
    bool number_unsigned(number_unsigned_t value) { return number(value, std::to_string(value)); }
    bool number_float(number_float_t value, const string_t& digits) { return number(value, digits); }
    bool string(string_t& value) { return put(std::move(value)); }
    bool binary(binary_t&) { return fail("binary data"); }
    bool start_object(std::size_t) { return open(Json::object()); }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(Json::array()); }
    bool end_array() { return close(); }
    bool key(string_t& name)
    {
        _key = std::move(name);
        return !_open.back()->contains(_key) || fail("the key " + _key + " is there twice");
    }
    bool parse_error(std::size_t, const std::string&, const Json::exception& error)
    {
        constexpr std::size_t maxLength = 300; // it shows what was read last, which may be long
        std::string_view message = error.what();
        message.remove_prefix(std::min(message.find("syntax error"), message.size()));
        if (message.empty())
            message = "no JSON";
        if (!Host::fromUtf8(message))
            message = message.substr(0, message.find("; last read"));
        return fail(std::string(Host::beginningOf(message, maxLength)));
    }

private:
    static constexpr std::size_t maxNesting = 4;

    template <class Number>
    bool number(Number value, std::string digits)
    {
        const bool isExact = _digits == Digits::All || (_open.size() > 1 && _topKey == "fill");
        return isExact ? put(std::move(digits)) : put(value);
    }
    bool put(Json value)
    {
        place(std::move(value));
        return !_open.empty() || fail("the text is no JSON object");
    }
    bool open(Json value)
    {
        if (_open.size() == maxNesting)
            return fail("values are nested too deep");
        if (_open.size() == 1)
            _topKey = _key;
        _open.push_back(place(std::move(value)));
        return _root.is_object() || fail("the text is no JSON object");
    }
    bool close()
    {
        _open.pop_back();
        return true;
    }
    Json* place(Json value)
    {
        if (_open.empty())
            return &(_root = std::move(value));
        Json& parent = *_open.back();
        if (parent.is_object())
            return &(parent[_key] = std::move(value));
        parent.push_back(std::move(value));
        return &parent.back();
    }
    bool fail(const std::string& what)
    {
        const auto reached = std::size_t(_reached - _text.data());
        const std::string_view before = _text.substr(0, reached - (reached > 0));
        const auto line = 1 + std::count(before.begin(), before.end(), '\n');
        const std::string_view inLine = before.substr(before.rfind('\n') + 1);
        const auto column = 1 + std::count_if(inLine.begin(), inLine.end(), [](char c) { return (c & 0xC0) != 0x80; });
        _fault = "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + what;
        return false;
    }

    const std::string_view _text;
    const Digits _digits;
    const char* _reached;
    Json _root;
    std::vector<Json*> _open; // an array isn't added to while something in it is open
    std::string _key;
    std::string _topKey; // of what is open in the outermost object
    std::string _fault;
};

} // namespace

Host::Result<Json> readJson(std::string_view text, Digits digits)
{
    return Builder(text, digits).read();
}

} // namespace Tools
