// cost                     each hostile file at two sizes, and what the operations take for it
// cost SECONDS [FOLDER]    looks for others: grows what made an operation slow or large, and keeps the worst in FOLDER
//
// An operation runs in a process of its own, of which the system tells processor time and peak memory; both count the
// opening, too. It fails when a file of less than 1 MB takes more than 2 seconds or 1 GB.

#include <fuzz/SeedFiles.h>
#include <host/fields/Fill.h>
#include <host/fields/FormFields.h>
#include <host/files/MemoryStripe.h>
#include <host/files/Open.h>
#include <host/losses/Examine.h>
#include <host/pages/Background.h>
#include <host/pages/PageTree.h>
#include <host/pages/Place.h>
#include <host/saving/Save.h>
#include <host/streams/Recompress.h>
#include <tests/support/Hostile.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>

namespace {

using namespace Tests;
using Document = Ref<PDF::Document>;

constexpr std::size_t largest = 1000000; // bytes of a file
constexpr double mostSeconds = 2;
constexpr long mostMemory = 1024; // MB

Document opened(const std::string& bytes)
{
    return PDF::Document::create(make<Host::MemoryStripe>(std::vector<std::uint8_t>(bytes.begin(), bytes.end())));
}

const std::string& plainPage()
{
    static const std::string file
        = PdfText().pages("3 0 R").stream(4, "q Q").object(3, "<</Type/Page/Contents 4 0 R/Resources<<>>>>");
    return file;
}

void fillAny(const Document& document, const Host::FieldValue& value)
{
    auto filler = Host::FormFiller::create(document);
    const auto form = Host::listFields(document);
    for (std::size_t i = 0; filler && form && i < form->fields.size(); ++i)
        if (!filler->fill(form->fields[i].path, value) || i == 2)
            break;
}

struct Operation {
    const char* name;
    std::function<void(const Document& document, const std::string& path)> run;
};
const Operation operations[] = {
    {"open", [](const Document&, const std::string&) {}},
    {"listFields", [](const Document& document, const std::string&) { (void)Host::listFields(document); }},
    {"fill a text", [](const Document& document, const std::string&) { fillAny(document, std::string("s1")); }},
    {"fill a state", [](const Document& document, const std::string&) { fillAny(document, true); }},
    {"pages", [](const Document& document, const std::string&) { (void)Host::pages(document); }},
    {"place beneath", [](const Document& document, const std::string&) {
        (void)Host::place(document, opened(plainPage()), {.layer = Host::Layer::Above, .hasAnnotations = true});
    }},
    {"place it", [](const Document& document, const std::string&) {
        (void)Host::place(opened(plainPage()), document, {.hasAnnotations = true});
    }},
    {"merge beneath", [](const Document& document, const std::string&) {
        (void)Host::mergeBackground(document, opened(plainPage()), PDF::BackgroundMode::AllPages, {.isForced = true});
    }},
    {"merge it", [](const Document& document, const std::string&) {
        (void)Host::mergeBackground(opened(plainPage()), document, PDF::BackgroundMode::AllPages, {.isForced = true});
    }},
    {"merge with itself", [](const Document& document, const std::string&) {
        (void)Host::mergeBackground(document, document, PDF::BackgroundMode::PagePairs, {.isForced = true});
    }},
    {"recompress", [](const Document& document, const std::string&) {
        (void)Host::recompress(document, PDF::Compression::Flate);
    }},
    {"to none", [](const Document& document, const std::string&) {
        (void)Host::recompress(document, PDF::Compression::None);
    }},
    {"to none, forced", [](const Document& document, const std::string&) {
        (void)Host::recompress(document, PDF::Compression::None, {.isForced = true});
    }},
    {"detach", [](const Document& document, const std::string& path) {
        Host::OpenedFile file{document, *Host::FileStripe::open(path)};
        (void)Host::detach(file);
    }},
    {"save", [](const Document& document, const std::string& path) {
        (void)Host::writeVerified(document, path + ".new", {.isPartialAllowed = true, .isLossyAllowed = true});
    }},
    {"examine", [](const Document&, const std::string& path) { (void)Host::examine(path); }},
};

// What an operation took.
struct Taken {
    double seconds = 0;
    long memory = 0; // MB
    bool hasEnded = true; // by itself

    bool isTooMuch() const { return seconds > mostSeconds || memory > mostMemory || !hasEnded; }
};

// Of this process, in MB: a forked one begins with it.
long residentMemory()
{
    long size = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * ::sysconf(_SC_PAGESIZE) / (1 << 20);
}

Taken measure(const Operation& operation, const std::string& bytes, const std::string& path)
{
    const long before = residentMemory();
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit memory = {std::uint64_t(4) << 30, std::uint64_t(4) << 30}, time = {20, 20}, core = {0, 0};
        ::setrlimit(RLIMIT_AS, &memory);
        ::setrlimit(RLIMIT_CPU, &time);
        ::setrlimit(RLIMIT_CORE, &core);
        if (!std::freopen("/dev/null", "w", stderr))
            ::_exit(1);
        if (const Document document = opened(bytes))
            operation.run(document, path);
        ::_exit(0);
    }
    int status = 0;
    rusage used{};
    ::wait4(child, &status, 0, &used);
    const auto secondsOf = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return {secondsOf(used.ru_utime) + secondsOf(used.ru_stime), std::max(used.ru_maxrss / 1024 - before, 0L),
        WIFEXITED(status)};
}

void put(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

void print(const Operation& operation, const std::string& what, std::size_t size, const Taken& cost)
{
    std::printf("%-18s %-22s %8zu bytes %7.2f s %6ld MB%s\n", operation.name, what.c_str(), size, cost.seconds,
        cost.memory, cost.isTooMuch() ? "  TOO MUCH" : "");
    std::fflush(stdout);
}

using Make = std::string (*)(std::size_t);
const std::pair<const char*, Make> hostile[] = {
    {"one option", Hostile::sharedOption}, {"one list of options", Hostile::sharedOptions},
    {"inherited stream", Hostile::inheritedStream}, {"listed stream", Hostile::listedStream},
    {"one list of states", Hostile::sharedStates}, {"long paths", Hostile::longPaths},
    {"shared kids", Hostile::sharedKids}, {"shared pages", Hostile::sharedPages},
    {"repeated page", Hostile::repeatedPage}, {"overlapping streams", Hostile::overlappingStreams},
    {"doubling references", [](std::size_t size) { return Hostile::doublingLetterhead(unsigned(size / 100)); }},
    {"shared names", [](std::size_t size) { return Hostile::sharedNames(size, 'n'); }},
};

// What costs more than opening does.
bool measureAll(const std::string& folder)
{
    bool isGood = true;
    for (const auto& [label, make] : hostile)
        for (const std::size_t size : {largest / 2 - 50000, largest - 100000}) {
            const std::string bytes = make(size), path = folder + "/file.pdf";
            put(path, bytes);
            const Taken opening = measure(operations[0], bytes, path);
            for (const Operation& operation : operations) {
                const Taken cost = measure(operation, bytes, path);
                isGood = isGood && !cost.isTooMuch();
                if (cost.isTooMuch() || cost.seconds > opening.seconds + 0.1 || cost.memory > opening.memory + 50)
                    print(operation, label, bytes.size(), cost);
            }
        }
    return isGood;
}

// ---- The search

// A file as the texts of its objects by their ids, so that its offsets are right after each change.
using Objects = std::map<unsigned, std::string>;

Objects objectsOf(const std::string& file)
{
    Objects objects;
    static const std::string begin = " 0 obj";
    for (std::size_t at = file.find(begin); at != file.npos; at = file.find(begin, at + 1)) {
        std::size_t id = at;
        while (id > 0 && std::isdigit(static_cast<unsigned char>(file[id - 1])))
            --id;
        const std::size_t end = std::min(file.find("endobj", at), file.size());
        const std::size_t number = std::strtoul(file.substr(id, at - id).c_str(), nullptr, 10);
        if (number > 0 && number < 100000)
            objects[unsigned(number)] = file.substr(at + begin.size(), end - at - begin.size());
    }
    return objects;
}

std::string fileOf(const Objects& objects)
{
    PdfText file;
    for (const auto& [id, text] : objects)
        file.object(id, text);
    return file;
}

// Pieces between which a text can be taken apart: brackets, words, strings, names.
std::vector<std::string> piecesOf(const std::string& text)
{
    std::vector<std::string> pieces;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i + 1;
        if (text.compare(i, 2, "<<") == 0 || text.compare(i, 2, ">>") == 0)
            end = i + 2;
        else if (text[i] == '(')
            end = std::min(text.find(')', i), text.size() - 1) + 1;
        else if (text[i] == '/' || std::isalnum(static_cast<unsigned char>(text[i])))
            while (end < text.size() && std::isalnum(static_cast<unsigned char>(text[end])))
                ++end;
        pieces.push_back(text.substr(i, end - i));
        i = end;
    }
    return pieces;
}

class Search {
public:
    Search(std::string folder, unsigned seed) : _folder(std::move(folder)), _random(seed) {}

    bool run(double seconds)
    {
        seed();
        const auto start = std::chrono::steady_clock::now();
        const auto isOver = [&] {
            return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() > seconds;
        };
        std::size_t tried = 0;
        for (; !isOver(); ++tried)
            attempt(_pools[1 + below(std::size(operations) - 1)]);
        bool isGood = true;
        for (const Pool& pool : _pools) {
            if (pool.kept.empty())
                continue;
            const Kept& worst = pool.kept.front();
            print(*pool.operation, "worst", worst.size, worst.cost);
            isGood = isGood && !worst.cost.isTooMuch();
            put(_folder + "/" + pool.operation->name + ".pdf", fileOf(worst.objects));
        }
        std::printf("%zu tried\n", tried);
        return isGood;
    }

private:
    struct Kept {
        Objects objects;
        std::size_t size;
        Taken cost;

        double score() const { return cost.hasEnded ? cost.seconds + double(cost.memory) / 500 : 1e9; }
    };
    struct Pool {
        const Operation* operation;
        std::vector<Kept> kept; // the worst first
    };
    static constexpr std::size_t poolSize = 6;

    std::size_t below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(_random); }

    void seed()
    {
        for (const auto& [label, make] : hostile)
            for (const std::size_t size : {2000u, 100000u})
                _seeds.push_back(objectsOf(make(size)));
        for (const auto& [name, file] : Fuzz::smallFiles())
            _seeds.push_back(objectsOf(file));
        for (const Operation& operation : operations)
            _pools.push_back({&operation, {}});
    }

    void attempt(Pool& pool)
    {
        Objects objects = pool.kept.empty() || below(4) == 0 ? _seeds[below(_seeds.size())]
                                                              : pool.kept[below(pool.kept.size())].objects;
        for (std::size_t i = 1 + below(4); i > 0 && !objects.empty(); --i)
            change(objects);
        const std::string bytes = fileOf(objects);
        if (bytes.size() >= largest)
            return;
        const std::string path = _folder + "/file.pdf";
        put(path, bytes);
        Kept kept{std::move(objects), bytes.size(), measure(*pool.operation, bytes, path)};
        const auto place = std::find_if(pool.kept.begin(), pool.kept.end(),
            [&kept](const Kept& other) { return kept.score() > other.score(); });
        pool.kept.insert(place, std::move(kept));
        if (pool.kept.size() > poolSize)
            pool.kept.pop_back();
    }

    // Takes some pieces of an object and repeats them, lets an object of their own have them, or puts a reference or
    // pieces of another object in their place.
    void change(Objects& objects)
    {
        auto object = std::next(objects.begin(), std::ptrdiff_t(below(objects.size())));
        const std::size_t data = std::min(object->second.find("stream"), object->second.size());
        std::vector<std::string> pieces = piecesOf(object->second.substr(0, data));
        if (pieces.empty())
            return;
        const std::size_t first = below(pieces.size());
        const std::size_t count = 1 + below(std::min<std::size_t>(pieces.size() - first, 16));
        std::string before, chosen, after;
        for (std::size_t i = 0; i < pieces.size(); ++i)
            (i < first ? before : i < first + count ? chosen : after) += pieces[i];
        const auto other = std::next(objects.begin(), std::ptrdiff_t(below(objects.size())));
        const std::string reference = " " + std::to_string(other->first) + " 0 R ";
        switch (below(5)) {
        case 0: chosen = Hostile::repeated(chosen, 1 + below(std::size_t(2) << below(16))); break;
        case 1: chosen = Hostile::repeated(reference, 1 + below(std::size_t(2) << below(16))); break;
        case 2: {
            const unsigned id = objects.rbegin()->first + 1;
            objects[id] = chosen;
            chosen = " " + std::to_string(id) + " 0 R ";
            break;
        }
        case 3: chosen = other->second.substr(0, other->second.find("stream")); break;
        default: chosen.clear(); break;
        }
        if (before.size() + chosen.size() + after.size() < largest)
            object->second = before + chosen + after + object->second.substr(data);
    }

    const std::string _folder;
    std::mt19937 _random;
    std::vector<Objects> _seeds;
    std::vector<Pool> _pools;
};

} // namespace

int main(int argc, char** argv)
{
    const std::string folder = argc > 2 ? argv[2] : std::filesystem::temp_directory_path() / "files-pdf-cost";
    std::filesystem::create_directories(folder);
    const double seconds = argc > 1 ? std::atof(argv[1]) : 0;
    const bool isGood = seconds > 0 ? Search(folder, std::random_device()()).run(seconds) : measureAll(folder);
    return isGood ? 0 : 1;
}
