#include <bench/Library.h>

namespace Bench {

std::string valueOfField(std::size_t group, std::size_t field)
{
    return "Value of field " + std::to_string(group) + '-' + std::to_string(field);
}

void Tally::print() const
{
    Bench::print("values", values);
    Bench::print("text_length", textLength);
    Bench::print("fractions", fractions);
    Bench::print("integer_sum", integerSum);
    Bench::print("booleans", booleans);
    Bench::print("id_sum", idSum);
}

namespace {

const std::vector<Operation> operations = {
    {"open", openAndTouch},
    {"walk", walk},
    {"rewrite", [](Job& job) { openAndSave(job, StreamForm::Stored); }},
    {"decode", decode},
    {"uncompress", [](Job& job) { openAndSave(job, StreamForm::Plain); }},
    {"compress", [](Job& job) { openAndSave(job, StreamForm::Flate); }},
    {"recompress", [](Job& job) { openAndSave(job, StreamForm::FlateAnew); }},
    {"background", addBackground},
    {"place", placePage},
    {"form", fillForm},
    {"form-drawn", drawForm},
};

} // namespace

} // namespace Bench

int main(int argc, char** argv)
{
    return Bench::runProgram(argc, argv, Bench::operations);
}
