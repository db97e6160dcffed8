// The operations, by libmupdf.

#include <bench/Library.h>

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <cstring>

namespace Bench {

namespace {

// The library throws by a long jump, which must not pass over C++ objects. So everything below one
// `attempt` holds such objects only outside of it.
template <class Work>
void attempt(fz_context* context, Work work)
{
    fz_try(context)
    {
        work();
    }
    fz_catch(context)
    {
        fail(fz_caught_message(context));
    }
}

class Context {
public:
    Context() : _context(fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT))
    {
        if (!_context)
            fail("no context");
    }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    ~Context() { fz_drop_context(_context); }
    operator fz_context*() const { return _context; }

private:
    fz_context* const _context;
};

// A document over bytes that must outlive it.
class Document {
public:
    Document(fz_context* context, const Bytes& bytes) : _context(context)
    {
        attempt(context, [&] {
            fz_stream* stream = fz_open_memory(context, bytes.data(), bytes.size());
            _document = pdf_open_document_with_stream(context, stream);
            fz_drop_stream(context, stream);
        });
        if (pdf_was_repaired(context, _document))
            fail("the file was repaired");
    }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document() { pdf_drop_document(_context, _document); }
    operator pdf_document*() const { return _document; }

private:
    fz_context* const _context;
    pdf_document* _document = nullptr;
};

void writeBytes(fz_context*, void* file, const void* data, std::size_t size)
{
    static_cast<OutputFile*>(file)->write(data, size);
}

std::int64_t placeIn(fz_context*, void* file)
{
    return static_cast<std::int64_t>(static_cast<OutputFile*>(file)->size());
}

void save(fz_context* context, pdf_document* document, const Job& job, const pdf_write_options& options)
{
    OutputFile file(job.out);
    attempt(context, [&] {
        fz_output* output = fz_new_output(context, OutputFile::bufferSize, &file, writeBytes, nullptr, nullptr);
        output->tell = placeIn;
        pdf_write_document(context, document, output, &options);
        fz_close_output(context, output);
        fz_drop_output(context, output);
    });
    file.close();
}

void touch(fz_context* context, pdf_obj* value, Tally& tally)
{
    ++tally.values;
    if (pdf_is_indirect(context, value)) {
        tally.idSum += static_cast<std::uint64_t>(pdf_to_num(context, value));
    } else if (pdf_is_name(context, value)) {
        tally.textLength += std::strlen(pdf_to_name(context, value));
    } else if (pdf_is_int(context, value)) {
        tally.integerSum += static_cast<std::uint64_t>(pdf_to_int64(context, value));
    } else if (pdf_is_string(context, value)) {
        tally.textLength += pdf_to_str_len(context, value);
    } else if (pdf_is_dict(context, value)) {
        for (int i = 0, count = pdf_dict_len(context, value); i < count; ++i) {
            tally.textLength += std::strlen(pdf_to_name(context, pdf_dict_get_key(context, value, i)));
            touch(context, pdf_dict_get_val(context, value, i), tally);
        }
    } else if (pdf_is_array(context, value)) {
        for (int i = 0, count = pdf_array_len(context, value); i < count; ++i)
            touch(context, pdf_array_get(context, value, i), tally);
    } else if (pdf_is_real(context, value)) {
        tally.fractions += pdf_to_real(context, value) != 0;
    } else if (pdf_is_bool(context, value)) {
        tally.booleans += static_cast<std::uint64_t>(pdf_to_bool(context, value));
    }
}

Tally walk(fz_context* context, pdf_document* document)
{
    Tally tally;
    attempt(context, [&] {
        for (int id = 1, end = pdf_xref_len(context, document); id < end; ++id)
            if (pdf_obj* object = pdf_load_object(context, document, id)) {
                touch(context, object, tally);
                pdf_drop_obj(context, object);
            }
    });
    return tally;
}

pdf_obj* pageRootOf(fz_context* context, pdf_document* document)
{
    return pdf_dict_getp(context, pdf_trailer(context, document), "Root/Pages");
}

// Appends one stream or an array of them, copied over when there is a map to copy with.
void appendContents(fz_context* context, pdf_obj* list, pdf_obj* contents, pdf_graft_map* map)
{
    const bool isArray = pdf_is_array(context, contents);
    for (int i = 0, count = isArray ? pdf_array_len(context, contents) : contents != nullptr; i < count; ++i) {
        pdf_obj* stream = isArray ? pdf_array_get(context, contents, i) : contents;
        if (map)
            pdf_array_push_drop(context, list, pdf_graft_mapped_object(context, map, stream));
        else
            pdf_array_push(context, list, stream);
    }
}

// The dictionary under a key, which is made when there is none.
pdf_obj* dictionaryAt(fz_context* context, pdf_obj* parent, pdf_obj* key)
{
    pdf_obj* found = pdf_dict_get(context, parent, key);
    return found ? found : pdf_dict_put_dict(context, parent, key, 4);
}

// Adds resources that belong to the document already.
void mergeResources(fz_context* context, pdf_obj* target, pdf_obj* resources)
{
    pdf_obj* categories = dictionaryAt(context, target, PDF_NAME(Resources));
    for (int i = 0, count = pdf_dict_len(context, resources); i < count; ++i) {
        pdf_obj* names = dictionaryAt(context, categories, pdf_dict_get_key(context, resources, i));
        pdf_obj* added = pdf_dict_get_val(context, resources, i);
        for (int j = 0, nameCount = pdf_dict_len(context, added); j < nameCount; ++j)
            pdf_dict_put(context, names, pdf_dict_get_key(context, added, j), pdf_dict_get_val(context, added, j));
    }
}

// What is taken over from the foreign document is copied once, and all pages refer to it.
void addForeignPage(fz_context* context, pdf_document* document, pdf_document* foreign)
{
    pdf_graft_map* map = pdf_new_graft_map(context, document);
    pdf_obj* root = pageRootOf(context, document);
    pdf_obj* foreignRoot = pageRootOf(context, foreign);
    pdf_obj* foreignPage = pdf_array_get(context, pdf_dict_get(context, foreignRoot, PDF_NAME(Kids)), 0);
    pdf_obj* own = pdf_dict_get(context, foreignPage, PDF_NAME(Resources));
    pdf_obj* resources = pdf_graft_mapped_object(
        context, map, own ? own : pdf_dict_get(context, foreignRoot, PDF_NAME(Resources)));
    pdf_obj* added = pdf_new_array(context, document, 4);
    appendContents(context, added, pdf_dict_get(context, foreignPage, PDF_NAME(Contents)), map);
    if (!own)
        mergeResources(context, root, resources);
    pdf_obj* kids = pdf_dict_get(context, root, PDF_NAME(Kids));
    for (int i = 0, count = pdf_array_len(context, kids); i < count; ++i) {
        pdf_obj* page = pdf_array_get(context, kids, i);
        if (own)
            mergeResources(context, page, resources);
        pdf_obj* contents = pdf_new_array(context, document, 4);
        appendContents(context, contents, added, nullptr);
        appendContents(context, contents, pdf_dict_get(context, page, PDF_NAME(Contents)), nullptr);
        pdf_dict_put_drop(context, page, PDF_NAME(Contents), contents);
    }
    pdf_drop_obj(context, added);
    pdf_drop_obj(context, resources);
    pdf_drop_graft_map(context, map);
}

} // namespace

void openAndTouch(Job& job)
{
    const Context context;
    const Document document(context, job.bytes);
    walk(context, document).print();
}

void walk(Job& job)
{
    const Context context;
    const Document document(context, job.bytes);
    measureWalk([&] { return walk(context, document); });
}

void openAndSave(Job& job, StreamForm form)
{
    const Context context;
    const Document document(context, job.bytes);
    pdf_write_options options = pdf_default_write_options;
    options.do_decompress = form == StreamForm::Plain || form == StreamForm::FlateAnew;
    options.do_compress = form == StreamForm::Flate || form == StreamForm::FlateAnew;
    save(context, document, job, options);
}

void decode(Job& job)
{
    const Context context;
    const Document document(context, job.bytes);
    DecodedData decoded;
    attempt(context, [&] {
        for (int id = 1, end = pdf_xref_len(context, document); id < end; ++id)
            if (pdf_obj_num_is_stream(context, document, id)) {
                fz_buffer* data = pdf_load_stream_number(context, document, id);
                decoded.add(data->data, data->len, job.isChecked);
                fz_drop_buffer(context, data);
            }
    });
    decoded.print(job.isChecked);
}

void addBackground(Job& job)
{
    const Context context;
    const Document document(context, job.bytes);
    const Document foreign(context, job.foreign);
    attempt(context, [&] { addForeignPage(context, document, foreign); });
    save(context, document, job, pdf_default_write_options);
}

void placePage(Job& job)
{
    addBackground(job);
}

void fillForm(Job& job)
{
    const Context context;
    const Document document(context, job.bytes);
    std::string value;
    attempt(context, [&] {
        pdf_obj* groups = pdf_dict_getp(context, pdf_trailer(context, document), "Root/AcroForm/Fields");
        for (int i = 0, groupCount = pdf_array_len(context, groups); i < groupCount; ++i) {
            pdf_obj* fields = pdf_dict_get(context, pdf_array_get(context, groups, i), PDF_NAME(Kids));
            for (int j = 0, count = pdf_array_len(context, fields); j < count; ++j) {
                value = valueOfField(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
                pdf_dict_put_text_string(
                    context, pdf_array_get(context, fields, j), PDF_NAME(V), value.c_str());
            }
        }
    });
    save(context, document, job, pdf_default_write_options);
}

// Its looks are made page by page, as they are shown.
void drawForm(Job& job)
{
    fillForm(job);
}

} // namespace Bench
