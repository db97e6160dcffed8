#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace Drawn {

// Collects the objects of a new file; object 1 is its catalog.
class FileText {
public:
    // Number the objects from 1 on. What was only reserved needs a `set` before the end.
    std::size_t add(const std::string& value)
    {
        _objects.push_back(value);
        return _objects.size();
    }
    std::size_t addStream(const std::string& data, const std::string& entries = "")
    {
        return add("<< /Length " + std::to_string(data.size()) + " " + entries + ">>\nstream\n" + data + "\nendstream");
    }
    std::size_t reserve() { return add(""); }
    void set(std::size_t id, const std::string& value) { _objects[id - 1] = value; }

    std::string finish() const
    {
        const std::string size = std::to_string(_objects.size() + 1);
        std::string text = "%PDF-1.7\n";
        std::string table = "xref\n0 " + size + "\n0000000000 65535 f \n";
        for (std::size_t i = 0; i < _objects.size(); ++i) {
            char row[32];
            std::snprintf(row, sizeof row, "%010zu 00000 n \n", text.size());
            table += row;
            text += std::to_string(i + 1) + " 0 obj\n" + _objects[i] + "\nendobj\n";
        }
        const std::string start = std::to_string(text.size());
        return text + table + "trailer\n<< /Root 1 0 R /Size " + size + " >>\nstartxref\n" + start + "\n%%EOF\n";
    }

private:
    std::vector<std::string> _objects;
};

// The text of a reference to an object.
inline std::string reference(std::size_t id)
{
    return std::to_string(id) + " 0 R";
}

} // namespace Drawn
