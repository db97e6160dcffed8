// Writes a small PDF file of two pages, to try the other programs on.

#include <examples/Command.h>

#include <fstream>

namespace {

const char help[] =
    "usage: make-example OUT\n"
    "\n"
    "Writes a small PDF file of two pages to OUT.\n"
    "\n"
    "Exit status: 0; 2 for wrong use and when OUT can't be written.\n";

// Collects the objects of a file and where they begin.
class FileText {
public:
    void add(const std::string& value)
    {
        _offsets.push_back(_text.size());
        _text += std::to_string(_offsets.size()) + " 0 obj\n" + value + "\nendobj\n";
    }
    void addStream(const std::string& data)
    {
        add("<< /Length " + std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream");
    }
    std::string finish() const
    {
        const std::string size = std::to_string(_offsets.size() + 1);
        std::string table = "xref\n0 " + size + "\n0000000000 65535 f \n";
        for (const std::size_t offset : _offsets) {
            char row[32];
            std::snprintf(row, sizeof row, "%010zu 00000 n \n", offset);
            table += row;
        }
        return _text + table + "trailer\n<< /Root 1 0 R /Size " + size + " >>\nstartxref\n"
            + std::to_string(_text.size()) + "\n%%EOF\n";
    }

private:
    std::string _text = "%PDF-1.4\n";
    std::vector<std::size_t> _offsets;
};

} // namespace

int main(int argc, char** argv)
{
    Examples::Command command("make-example", help, 1, {});
    if (const auto status = command.parse(argc, argv))
        return *status;
    FileText file;
    file.add("<< /Type /Catalog /Pages 2 0 R >>");
    file.add("<< /Type /Pages /Kids [ 4 0 R 6 0 R ] /Count 2 /MediaBox [ 0 0 420 298 ] "
             "/Resources << /Font << /F1 3 0 R >> >> >>");
    file.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    for (const int page : {1, 2}) {
        file.add("<< /Type /Page /Parent 2 0 R /Contents " + std::to_string(3 + 2 * page) + " 0 R >>");
        file.addStream("BT /F1 24 Tf 60 200 Td (This is page " + std::to_string(page) + ".) Tj ET");
    }
    std::ofstream out(command.operand(0), std::ios::binary);
    out << file.finish() << std::flush;
    if (!out)
        return command.refuse(command.operand(0), {"can't be written", 0, true});
    return command.finish();
}
