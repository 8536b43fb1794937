// The native part of the Python package `quillmark`.

#include "comparing.h"
#include "errors.h"
#include "item_list.h"
#include "model_classes.h"
#include "preparing.h"
#include "quillmark/version.h"
#include "reading.h"
#include "values.h"
#include "verbs.h"

PYBIND11_MODULE(_quillmark, module) {
    namespace python = quillmark::python;

    module.doc() = "Descriptions of control units (A2L), bound to libquillmark.";
    module.attr("__version__") = pybind11::str(quillmark::productVersion());
    python::loadEnumerations();
    python::declareFinding(module);
    python::declareItemList(module);
    python::declareModelClasses(module);
    python::declareProtocolClasses(module);
    python::declareReading(module);
    python::declareVerbs(module);
    python::declareComparing(module);
    python::declarePreparing(module);
}
