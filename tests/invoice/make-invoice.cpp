// Writes the project's own example files: the form of an invoice, and the letterhead of who sends it.

#include <tests/invoice/Drawing.h>
#include <tests/invoice/FileText.h>

#include <fstream>

namespace {

using Drawn::Color;
using Drawn::Drawing;
using Drawn::FileText;
using Drawn::numbers;
using Drawn::reference;

constexpr double pageWidth = 595;
constexpr double pageHeight = 842;
constexpr double left = 56;
constexpr double right = 539;
constexpr Color ink = {0.16, 0.2, 0.22};
constexpr Color gray = {0.43, 0.47, 0.49};
constexpr Color tint = {0.94, 0.96, 0.95};
constexpr Color edge = {0.75, 0.81, 0.79};
constexpr Color pine = {0.12, 0.34, 0.29};
constexpr Color pale = {0.95, 0.97, 0.96};
constexpr Color amber = {0.87, 0.58, 0.2};
constexpr Color white = {1, 1, 1};

struct Box {
    double x, y, width, height;
};

std::string rectangleOf(const Box& box)
{
    return "[ " + numbers(box.x, box.y, box.x + box.width, box.y + box.height) + " ]";
}

std::size_t addFont(FileText& file, const std::string& name, const std::string& encoding = "/Encoding /WinAnsiEncoding")
{
    return file.add("<< /Type /Font /Subtype /Type1 /BaseFont /" + name + " " + encoding + " >>");
}

// Pages of A4 that inherit what they draw with.
void addPageTree(FileText& file, std::size_t id, const std::vector<std::size_t>& pages, const std::string& fonts)
{
    std::string kids;
    for (const std::size_t page : pages)
        kids += reference(page) + " ";
    file.set(id, "<< /Type /Pages /Kids [ " + kids + "] /Count " + std::to_string(pages.size()) + " /MediaBox "
            + rectangleOf({0, 0, pageWidth, pageHeight}) + " /Resources << /Font << " + fonts + " >> >> >>");
}

// The form: its fields and its two pages.
class InvoiceForm {
public:
    std::string write()
    {
        const std::size_t catalog = _file.reserve();
        const std::size_t tree = _file.reserve();
        const std::string helvetica = "/Helv " + reference(addFont(_file, "Helvetica"));
        const std::string fonts = helvetica + " /HeBo " + reference(addFont(_file, "Helvetica-Bold"));
        const std::string marks = "/ZaDb " + reference(addFont(_file, "ZapfDingbats", "")); // of buttons
        _resources = "/Resources << /Font << " + helvetica + " >> >> ";
        const std::size_t first = addPage(tree, &InvoiceForm::drawInvoice);
        const std::size_t second = addPage(tree, &InvoiceForm::drawDelivery);
        addPageTree(_file, tree, {first, second}, fonts);
        _file.set(catalog, "<< /Type /Catalog /Pages " + reference(tree) + " /AcroForm << /Fields [ " + _fields
                + "] /DA (/Helv 10 Tf 0 g) /DR << /Font << " + helvetica + " " + marks + " >> >> >> >>");
        return _file.finish();
    }

private:
    std::size_t addPage(std::size_t tree, void (InvoiceForm::*draw)(Drawing&))
    {
        const std::size_t page = _file.reserve();
        _page = reference(page);
        _widgets.clear();
        Drawing drawing;
        (this->*draw)(drawing);
        _file.set(page, "<< /Type /Page /Parent " + reference(tree) + " /Contents "
                + reference(_file.addStream(drawing.content())) + " /Annots [ " + _widgets + "] >>");
        return page;
    }

    void drawInvoice(Drawing& page)
    {
        page.color(ink).text("HeBo", 25, left, 664, "Invoice");
        label(page, left, 638, "Bill to");
        text("billTo", {left, 562, 230, 70}, Flags::Multiline);
        const std::pair<const char*, const char*> heads[] = {
            {"number", "Invoice number"}, {"date", "Date"}, {"order", "Your order"}};
        double y = 614;
        for (const auto& [name, words] : heads) {
            label(page, 330, y + 5, words);
            text(name, {419, y, 120, 18});
            y -= 26;
        }
        drawItems(page, 520);
        drawTotals(page, 346);
        drawPayment(page, 346);
        foot(page, 1);
    }

    void drawItems(Drawing& page, double top)
    {
        page.color(ink).bar(left, top, right - left, 20).color(white);
        const std::pair<double, const char*> heads[] = {
            {left + 6, "Description"}, {335, "Quantity"}, {403, "Unit price"}, {498, "Amount"}};
        for (const auto& [x, words] : heads)
            page.text("HeBo", 9, x, top + 6.5, words);
        for (int row = 1; row <= 5; ++row) {
            const double y = top - 25.0 * row;
            const std::string number = std::to_string(row);
            text("description" + number, {left, y, 260, 21});
            text("quantity" + number, {320, y, 56, 21}, Flags::None, Align::Right);
            text("price" + number, {380, y, 72, 21}, Flags::None, Align::Right);
            text("amount" + number, {456, y, right - 456, 21}, Flags::None, Align::Right);
        }
    }

    void drawTotals(Drawing& page, double top)
    {
        const std::pair<const char*, const char*> sums[] = {
            {"net", "Net amount"}, {"tax", "Value added tax"}, {"total", "Total in EUR"}};
        double y = top;
        for (const auto& [name, words] : sums) {
            const bool isTotal = name == std::string("total");
            page.color(isTotal ? ink : gray).text(isTotal ? "HeBo" : "Helv", isTotal ? 11 : 9, 362, y + 6.5, words);
            text(name, {456, y, right - 456, 21}, Flags::None, Align::Right);
            y -= 26;
        }
        page.color(ink).width(0.8).line(362, y + 21, right, y + 21);
    }

    void drawPayment(Drawing& page, double top)
    {
        label(page, left, top + 8, "Terms of payment");
        choice("terms", {left, top - 16, 230, 19}, {"within 14 days", "within 30 days", "in advance"});
        label(page, left, top - 42, "Sent by");
        const char* const ways[] = {"Courier", "Post", "Collected"};
        radioButtons(page, "delivery", left, top - 62, ways);
        checkBox(page, "partial", {left, top - 94, 12, 12}, "This is a part of the order, the rest follows");
        checkBox(page, "paid", {left, top - 116, 12, 12}, "Paid already, with thanks");
        label(page, left, top - 150, "Remarks");
        text("remarks", {left, top - 224, right - left, 68}, Flags::Multiline);
    }

    void drawDelivery(Drawing& page)
    {
        page.color(ink).text("HeBo", 25, left, 664, "Delivery note");
        label(page, left, 638, "Deliver to");
        text("deliverTo", {left, 562, 230, 70}, Flags::Multiline);
        label(page, 330, 638, "Contents of the parcels");
        text("parcels", {330, 562, right - 330, 70}, Flags::Multiline);
        page.color(ink).text("Helv", 10, left, 520,
            "Please look at the goods when they arrive, and tell us about damage within eight days.");
        checkBox(page, "complete", {left, 488, 12, 12}, "Everything has arrived");
        checkBox(page, "undamaged", {left, 466, 12, 12}, "Nothing is damaged");
        page.color(ink).width(0.6).line(left, 390, 280, 390).line(330, 390, right, 390);
        label(page, left, 378, "Place and date");
        label(page, 330, 378, "Signature");
        foot(page, 2);
    }

    static void label(Drawing& page, double x, double y, const std::string& words)
    {
        page.color(gray).text("Helv", 9, x, y, words);
    }
    static void foot(Drawing& page, int number)
    {
        label(page, 492, 92, "Page " + std::to_string(number) + " of 2");
    }

    // Fields. Each is shown in one place, radio buttons apart.
    enum class Flags { None = 0, Multiline = 1 << 12, Radio = (1 << 15) | (1 << 14), Combo = 1 << 17 };
    enum class Align { Left, Center, Right };

    // How a viewer draws a field itself. A button that is on shows the character `mark`.
    static std::string style(const std::string& characteristics = grounds())
    {
        return "/MK << " + characteristics + ">> /BS << /W 1 /S /S >> ";
    }
    static std::string markStyle(char mark, const std::string& characteristics)
    {
        return style(characteristics + "/CA (" + mark + ") ") + "/DA (/ZaDb 0 Tf " + numbersOf(pine) + " rg) ";
    }
    static std::string grounds()
    {
        return "/BG [ " + numbersOf(tint) + " ] /BC [ " + numbersOf(edge) + " ] ";
    }

    // An appearance of the size of a box: its ground, and what is drawn on it.
    std::string appearance(const Box& box, const Drawing& drawing)
    {
        return reference(_file.addStream(drawing.content(), "/Type /XObject /Subtype /Form /BBox "
                + rectangleOf({0, 0, box.width, box.height}) + " " + _resources));
    }
    static Drawing ground(const Box& box)
    {
        Drawing drawing;
        drawing.color(tint).bar(0, 0, box.width, box.height);
        return drawing.color(edge).width(1).frame(0.5, 0.5, box.width - 1, box.height - 1);
    }

    std::size_t addWidget(const Box& box, const std::string& entries)
    {
        const std::size_t widget = _file.add("<< /Type /Annot /Subtype /Widget /F 4 /Rect " + rectangleOf(box) + " /P "
            + _page + " " + entries + ">>");
        _widgets += reference(widget) + " ";
        return widget;
    }
    void addField(const Box& box, const std::string& name, const std::string& entries, Flags flags = Flags::None)
    {
        _fields += reference(addWidget(
                       box, "/T (" + name + ") /Ff " + std::to_string(int(flags)) + " " + entries)) + " ";
    }

    void text(const std::string& name, const Box& box, Flags flags = Flags::None, Align align = Align::Left)
    {
        addField(box, name, style() + "/FT /Tx /Q " + std::to_string(int(align)) + " /DA (/Helv 10 Tf 0 g) /AP << /N "
                + appearance(box, ground(box)) + " >> ", flags);
    }

    void choice(const std::string& name, const Box& box, const std::vector<std::string>& options)
    {
        std::string all;
        for (const std::string& option : options)
            all += "(" + option + ") ";
        addField(box, name, style() + "/FT /Ch /DA (/Helv 10 Tf 0 g) /Opt [ " + all + "] /AP << /N "
                + appearance(box, ground(box)) + " >> ", Flags::Combo);
    }

    // The states of a button: `on` under its name, and Off.
    std::string states(const Box& box, const std::string& name, const Drawing& on, const Drawing& off)
    {
        return "/AS /Off /AP << /N << /" + name + " " + appearance(box, on) + " /Off " + appearance(box, off)
            + " >> >> ";
    }

    void checkBox(Drawing& page, const std::string& name, const Box& box, const std::string& words)
    {
        page.color(ink).text("Helv", 10, box.x + 20, box.y + 2.5, words);
        Drawing on = ground(box);
        on.color(pine).width(1.8).put("2.5 6 m 5 3 l 9.5 9.5 l S");
        addField(box, name, markStyle('4', grounds()) + "/FT /Btn /V /Off " + states(box, "Yes", on, ground(box)));
    }

    void radioButtons(Drawing& page, const std::string& name, double x, double y, const char* const (&ways)[3])
    {
        const std::size_t field = _file.reserve();
        std::string kids;
        for (const char* way : ways) {
            const Box box = {x, y, 12, 12};
            page.color(ink).text("Helv", 10, x + 18, y + 2.5, way);
            page.color(tint).circle(x + 6, y + 6, 5.5, Drawing::Ring::Filled);
            page.color(edge).width(1).circle(x + 6, y + 6, 5.5, Drawing::Ring::Drawn);
            Drawing on;
            on.color(pine).circle(6, 6, 3, Drawing::Ring::Filled);
            const std::string entries = "/Parent " + reference(field) + " " + markStyle('l', "");
            kids += reference(addWidget(box, entries + states(box, way, on, Drawing()))) + " ";
            x += 76;
        }
        _file.set(field, "<< /FT /Btn /T (" + name + ") /Ff " + std::to_string(int(Flags::Radio)) + " /V /Off /Kids [ "
                + kids + "] >>");
        _fields += reference(field) + " ";
    }

    FileText _file;
    std::string _resources; // of appearances
    std::string _fields;
    std::string _page;    // the one that is being drawn
    std::string _widgets; // on it
};

// A pine of three layers; `x` and `y` are the middle of its foot, `size` is its height.
void drawPine(Drawing& page, double x, double y, double size)
{
    page.bar(x - 0.05 * size, y, 0.1 * size, 0.2 * size);
    for (const auto& [base, half] : {std::pair(0.15, 0.38), std::pair(0.38, 0.3), std::pair(0.6, 0.22)})
        page.put(numbers(x - half * size, y + base * size) + " m " + numbers(x + half * size, y + base * size) + " l "
            + numbers(x, y + (base + 0.4) * size) + " l f");
}

void drawHead(Drawing& page)
{
    page.color(pine).bar(0, pageHeight - 14, pageWidth, 14);
    page.color(amber).bar(0, pageHeight - 17, pageWidth, 3);
    page.color(pine).circle(left + 29, 770, 29, Drawing::Ring::Filled);
    drawPine(page.color(white), left + 29, 749, 42);
    page.color(pine).text("LetterBold", 22, left + 72, 772, "Pinegrove Joinery");
    page.color(amber).bar(left + 72, 762.5, 44, 2);
    page.color(gray).text("LetterText", 9.5, left + 72, 747, "Tables, shelves and doors, made to measure");
    const char* const lines[] = {"12 Sawmill Lane", "Millbrook", "Tel. 555 0142", "office@pinegrove.example"};
    double y = 789;
    for (const char* line : lines) {
        page.color(gray).text("LetterText", 8.5, 430, y, line);
        y -= 13;
    }
    page.color(amber).bar(420, 748, 1.2, 50);
}

void drawFoot(Drawing& page)
{
    page.color(pine).bar(0, 0, pageWidth, 10).color(amber).bar(0, 10, pageWidth, 2);
    page.color(edge).width(0.7).line(left, 74, right, 74);
    const struct {
        double x;
        const char* lines[4];
    } columns[] = {
        {left, {"Pinegrove Joinery Ltd.", "12 Sawmill Lane", "Millbrook MB4 7QX", "www.pinegrove.example"}},
        {225, {"Millbrook Savings Bank", "Account 0042 1187 03", "Sort code 00-11-22", "BIC EXAMPLEXXX"}},
        {395, {"Managing director: R. Holm", "Trade register Millbrook 5521", "VAT number EX 123 456 789",
                  "Tax office Millbrook"}},
    };
    for (const auto& column : columns)
        for (int i = 0; i < 4; ++i)
            page.color(i == 0 ? pine : gray).text(i == 0 ? "LetterBold" : "LetterText", 7.5, column.x, 61.0 - 11 * i,
                column.lines[i]);
}

std::string letterhead()
{
    FileText file;
    file.reserve();
    const std::size_t tree = file.reserve();
    file.set(1, "<< /Type /Catalog /Pages " + reference(tree) + " >>");
    const std::string fonts = "/LetterText " + reference(addFont(file, "Helvetica")) + " /LetterBold "
        + reference(addFont(file, "Helvetica-Bold"));
    Drawing page;
    drawPine(page.color(pale), 452, 112, 330);
    drawHead(page);
    drawFoot(page);
    const std::size_t content = file.addStream(page.content());
    const std::size_t only =
        file.add("<< /Type /Page /Parent " + reference(tree) + " /Contents " + reference(content) + " >>");
    addPageTree(file, tree, {only}, fonts);
    return file.finish();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("Usage: make-invoice FORM LETTERHEAD\n", stderr);
        return 2;
    }
    const std::string texts[] = {InvoiceForm().write(), letterhead()};
    for (int i = 0; i < 2; ++i) {
        std::ofstream out(argv[1 + i], std::ios::binary);
        out << texts[i] << std::flush;
        if (!out) {
            std::fprintf(stderr, "make-invoice: %s: can't be written\n", argv[1 + i]);
            return 2;
        }
    }
}
