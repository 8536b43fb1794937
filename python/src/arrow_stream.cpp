#include "arrow_stream.h"

#include <cerrno>
#include <new>

#include "arrow_abi.h"

namespace quillmark::python {
namespace {

using NodePointer = std::shared_ptr<const ArrowNode>;

constexpr const char* kCapsuleName = "arrow_array_stream";
constexpr std::int64_t kNullable = 2;

/// What stands behind a structure that was handed out, which is an ArrowSchema or an ArrowArray.
/// Each keeps the whole table: parts may be moved away and outlive it.
template <typename Structure>
struct Exported {
    NodePointer node;
    std::vector<const void*> buffers = {};
    std::vector<Structure> children = {};
    std::vector<Structure*> childPointers = {};
    Structure dictionary = {};
};

template <typename Structure>
void release(Structure* structure) {
    if (structure->release != nullptr) {
        structure->release(structure);
    }
}

/// Releases what nobody has moved away.
template <typename Structure>
void releaseExported(Structure* structure) {
    const std::unique_ptr<Exported<Structure>> exported(
        static_cast<Exported<Structure>*>(structure->private_data));
    for (Structure& child : exported->children) {
        release(&child);
    }
    release(&exported->dictionary);
    structure->release = nullptr;
}

void fill(const Exported<ArrowSchema>& exported, ArrowSchema& schema) {
    schema.format = exported.node->format;
    schema.name = exported.node->name;
    schema.flags = exported.node->isNullable ? kNullable : 0;
}

void fill(Exported<ArrowArray>& exported, ArrowArray& array) {
    for (const ArrowBuffer& buffer : exported.node->buffers) {
        exported.buffers.push_back(buffer.get());
    }
    array.length = exported.node->length;
    array.null_count = exported.node->absentCount;
    array.n_buffers = static_cast<std::int64_t>(exported.buffers.size());
    array.buffers = exported.buffers.data();
}

template <typename Structure>
void exportNode(const NodePointer& node, Structure& structure) {
    auto exported = std::make_unique<Exported<Structure>>(Exported<Structure>{node});
    structure = {};
    fill(*exported, structure);
    exported->children.resize(node->children.size());
    exported->childPointers.reserve(node->children.size());
    structure.release = &releaseExported<Structure>;
    structure.n_children = static_cast<std::int64_t>(node->children.size());
    structure.children = exported->childPointers.data();
    structure.private_data = exported.get();
    auto& held = *exported.release();
    // From here on the structure releases what is there already if there is no memory for more.
    for (std::size_t i = 0; i < node->children.size(); ++i) {
        exportNode(NodePointer(node, &node->children[i]), held.children[i]);
        held.childPointers.push_back(&held.children[i]);
    }
    if (node->dictionary != nullptr) {
        exportNode(NodePointer(node, node->dictionary.get()), held.dictionary);
        structure.dictionary = &held.dictionary;
    }
}

/// The same for a caller in C: 0, or the number of the error.
template <typename Structure>
int exportTo(const NodePointer& node, Structure* structure) noexcept {
    *structure = {};
    try {
        exportNode(node, *structure);
    } catch (const std::bad_alloc&) {
        release(structure);
        return ENOMEM;
    }
    return 0;
}

/// What stands behind a stream.
struct Stream {
    NodePointer table;
    bool isAtEnd = false;
};

Stream& streamOf(ArrowArrayStream* stream) {
    return *static_cast<Stream*>(stream->private_data);
}

int giveSchema(ArrowArrayStream* stream, ArrowSchema* schema) {
    return exportTo(streamOf(stream).table, schema);
}

/// Gives the one batch, and then one that is released already, which is the end.
int giveNext(ArrowArrayStream* stream, ArrowArray* array) {
    Stream& state = streamOf(stream);
    if (state.isAtEnd) {
        *array = {};
        return 0;
    }
    const int error = exportTo(state.table, array);
    state.isAtEnd = error == 0;
    return error;
}

const char* tellError(ArrowArrayStream* /*stream*/) {
    return nullptr;
}

void releaseStream(ArrowArrayStream* stream) {
    delete &streamOf(stream);
    stream->release = nullptr;
}

/// Releases a stream that nobody has taken out of its capsule.
void destroyCapsule(PyObject* capsule) {
    const std::unique_ptr<ArrowArrayStream> stream(
        static_cast<ArrowArrayStream*>(PyCapsule_GetPointer(capsule, kCapsuleName)));
    release(stream.get());
}

}  // namespace

py::capsule arrowStream(ArrowNode table) {
    auto state =
        std::make_unique<Stream>(Stream{std::make_shared<const ArrowNode>(std::move(table))});
    auto stream = std::make_unique<ArrowArrayStream>();
    *stream = {&giveSchema, &giveNext, &tellError, &releaseStream, state.get()};
    auto capsule = py::reinterpret_steal<py::capsule>(
        PyCapsule_New(stream.get(), kCapsuleName, &destroyCapsule));
    if (!capsule) {
        throw py::error_already_set();
    }
    static_cast<void>(state.release());
    static_cast<void>(stream.release());
    return capsule;
}

}  // namespace quillmark::python
