#include <tests/support/Documents.h>

#include <gtest/gtest.h>

#include <ctime>
#include <map>
#include <random>

using namespace Tests;

namespace {

Ref<PDF::Value> number(std::int64_t value)
{
    return make<PDF::NumberObj>(value, 0);
}

Ref<PDF::Value> name(const char* value)
{
    return make<PDF::NameObj>(text(value));
}

} // namespace

TEST(Array, comparesByPositionAndTellsWhyAnAccessFails)
{
    LogCapture log;
    const Ref<PDF::Array> array = PDF::Array::create({name("a"), nullptr, make<PDF::ObjectRefObj>(1, 0)});
    EXPECT_EQ(plain(array->asText()), "[a null1 (0) ]");
    EXPECT_EQ(plain(array->getAsName(0)->value()), "a");
    Error::set(77);
    EXPECT_EQ(codeOf(array->getAsName(1)), 77u) << "a missing element is out of range, and the earlier code stays";
    EXPECT_EQ(codeOf(array->getAsString(26)), 77u);
    EXPECT_EQ(codeOf(array->getAsObjectRef(0)), ErrWrongType);
    EXPECT_EQ(log.take(), (Lines{"Index out of range in array: 1h (1)", "Index out of range in array: 1Ah (26)",
                              "Expected value of type 5h (5), but got one of type 1h (1)"}));
    EXPECT_EQ(codeOf(array->append(nullptr)), ErrNullArgument);
    const Ref<PDF::Array> ab = PDF::Array::create({name("a")});
    EXPECT_FALSE(ab->equal(PDF::Array::create({name("a"), name("b")})));
    EXPECT_TRUE(ab->append(name("b")));
    EXPECT_TRUE(ab->equal(PDF::Array::create({name("a"), name("b")})));
    EXPECT_FALSE(ab->equal(PDF::Array::create({name("b"), name("a")})));
    EXPECT_FALSE(ab->equal(PDF::Array::create({name("a")})));
    EXPECT_FALSE(ab->changed());
}

TEST(Dictionary, keysStayInOrderAndTheLastOfEqualOnesWins)
{
    const Ref<PDF::DictionaryObj> built = make<PDF::DictionaryObj>();
    for (const char* key : {"Z", "A", "M", "Mm", "A"})
        EXPECT_TRUE(built->set(text(key), name(key)));
    EXPECT_EQ(plain(built->asText()), "<< A -> A M -> M Mm -> Mm Z -> Z >>");
    PDF::DictionaryObj::Entries entries;
    for (const char* key : {"b", "a", "b", "c", "a"})
        entries.push_back({text(key), number(static_cast<std::int64_t>(entries.size()))});
    const Ref<PDF::DictionaryObj> read = make<PDF::DictionaryObj>(std::move(entries));
    EXPECT_EQ(plain(read->asText()), "<< a -> 4.0 b -> 2.0 c -> 3.0 >>");
    EXPECT_FALSE(read->changed());
    EXPECT_TRUE(read->set(text("b"), nullptr));

    const Ref<PDF::DictionaryObj> other = make<PDF::DictionaryObj>();
    other->set(text("c"), number(3));
    EXPECT_FALSE(read->equal(other));
    other->set(text("a"), number(4));
    EXPECT_TRUE(read->equal(other)) << "the order of making doesn't count";
    other->set(text("a"), number(5));
    EXPECT_FALSE(read->equal(other));
}

TEST(Dictionary, aLargeOneIsTheSameAfterChangesAnywhere)
{
    const Ref<PDF::DictionaryObj> dictionary = make<PDF::DictionaryObj>();
    std::map<std::string, int> model;
    std::minstd_rand random(1);
    // It grows at its end, then is changed all over, at last mostly by removals.
    for (int step = 0; step < 6000; ++step) {
        const std::string key = std::to_string(1000 + (step < 500 ? step : static_cast<int>(random() % 1000)));
        const bool isRemoved = step >= 500 && random() % 6000 < static_cast<unsigned>(step);
        dictionary->set(text(key), isRemoved ? nullptr : number(step));
        isRemoved ? void(model.erase(key)) : void(model[key] = step);
        if (step % 500 != 499)
            continue;
        SCOPED_TRACE(step);
        std::string shown = "<<", written = "<<";
        PDF::DictionaryObj::Entries entries;
        for (const auto& [modelKey, value] : model) {
            shown += " " + modelKey + " -> " + std::to_string(value) + ".0";
            written += " /" + modelKey + " " + std::to_string(value);
            entries.insert(entries.begin(), {text(modelKey), number(value)});
        }
        EXPECT_EQ(plain(dictionary->asText()), shown + " >>");
        const Ref<TConstArray<std::uint32_t>> file = PDF::writtenText(open(PdfText().pages()), dictionary);
        EXPECT_EQ(std::string(file->data(), file->data() + file->size()), written + " >>");
        EXPECT_TRUE(dictionary->equal(make<PDF::DictionaryObj>(std::move(entries)))) << "one that was read";
        EXPECT_EQ(bool(dictionary->find(text("1000"))), model.contains("1000"));
        dictionary->resetChanged();
        EXPECT_FALSE(dictionary->changed());
    }
}

TEST(Dictionary, whereTheChangesAreDoesNotMultiplyTheirTime)
{
    constexpr int count = 200000;
    const Ref<PDF::DictionaryObj> dictionary = make<PDF::DictionaryObj>();
    const auto key = [](int i) { return text(std::to_string(1000000 + i)); };
    const std::clock_t start = std::clock();
    for (int i = count; i-- > 0;)
        dictionary->set(key(i), number(i));
    for (int i = 0; i < count; ++i)
        dictionary->set(key(i), nullptr);
    // Moving the later entries each time would take a minute.
    EXPECT_LT(std::clock() - start, 10 * CLOCKS_PER_SEC);
    EXPECT_EQ(dictionary->keys()->size(), 0u);
}

TEST(Dictionary, lookupsLeaveTheirCodes)
{
    LogCapture log;
    const Ref<PDF::DictionaryObj> dictionary = make<PDF::DictionaryObj>();
    dictionary->set(text("Number"), number(1));
    EXPECT_EQ(codeOf(dictionary->find(nullptr)), ErrNullArgument);
    EXPECT_EQ(codeOf(dictionary->find(text(""))), ErrInvalidArgument);
    EXPECT_EQ(codeOf(dictionary->set(text(""), number(1))), ErrInvalidArgument);
    EXPECT_EQ(codeOf(dictionary->find(text("Type"))), ErrNotAvailable);
    EXPECT_EQ(codeOf(dictionary->findAsName(text("Type"), true)), ErrNotAvailable);
    EXPECT_TRUE(log.take().empty());
    EXPECT_EQ(codeOf(dictionary->findAsArray(text("Type"), false)), ErrNotAvailable);
    EXPECT_EQ(codeOf(dictionary->findAsName(text("Number"), true)), ErrWrongType);
    EXPECT_EQ(log.take(), (Lines{"Key not found in dictionary: Type",
                              "Expected value of type 1h (1), but got one of type 3h (3)"}));
}

TEST(Dictionary, changesShowThroughDictionariesAndStreamsButNotThroughArrays)
{
    const Ref<PDF::DictionaryObj> inner = make<PDF::DictionaryObj>();
    const Ref<PDF::StreamObj> stream = make<PDF::StreamObj>(make<PDF::DictionaryObj>(), 5);
    const Ref<PDF::DictionaryObj> outer = make<PDF::DictionaryObj>();
    outer->set(text("I"), inner);
    outer->set(text("A"), PDF::Array::create({inner}));
    outer->set(text("S"), stream);
    outer->resetChanged();
    EXPECT_FALSE(outer->changed());
    EXPECT_TRUE(inner->set(text("absent"), nullptr)) << "removing nothing succeeds, and counts";
    EXPECT_TRUE(outer->changed());
    outer->set(text("I"), nullptr);
    outer->resetChanged();
    EXPECT_FALSE(outer->changed()) << "an array tells nothing";
    stream->dict()->set(text("K"), number(1));
    EXPECT_FALSE(outer->changed()) << "a stream's dictionary doesn't count";
    stream->strmData(nullptr);
    EXPECT_TRUE(outer->changed());
    EXPECT_FALSE(stream->equal(stream)) << "no stream equals another";
}

TEST(IndirectObject, accessorsHaveTheirOwnWordings)
{
    LogCapture log;
    const Ref<PDF::Object> empty = make<PDF::ObjectObj>(7, 0, nullptr);
    EXPECT_EQ(empty->valueType(), PDF::Value::Type::Invalid);
    EXPECT_EQ(codeOf(empty->valueAsArray()), ErrNoValue);
    const Ref<PDF::Object> object = make<PDF::ObjectObj>(12, 3, make<PDF::DictionaryObj>());
    EXPECT_EQ(plain(object->asText()), "12 (3)");
    EXPECT_TRUE(object->valueAsDictionary());
    EXPECT_FALSE(object->valueAsArray());
    EXPECT_EQ(codeOf(object->valueAsStream()), ErrWrongType);
    EXPECT_EQ(log.take(), (Lines{"Object has no valid value", "Object has no valid value",
                              "Expected value of type 8h (8), but got one of type 6h (6)",
                              "Unexpected type of value; expected = 7h (7), got = 6h (6)"}));
}
