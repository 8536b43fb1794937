#pragma once

/// All of libquillmark: reading, walking, converting, expanding and comparing descriptions of
/// control units. docs/library.md tells who owns what, what threads may do and how versions go on.
#include "quillmark/bytes.h"
#include "quillmark/compare.h"
#include "quillmark/convert.h"
#include "quillmark/description.h"
#include "quillmark/diff.h"
#include "quillmark/enumerations.h"
#include "quillmark/expand.h"
#include "quillmark/export.h"
#include "quillmark/finding.h"
#include "quillmark/list.h"
#include "quillmark/model.h"
#include "quillmark/number.h"
#include "quillmark/prepare.h"
#include "quillmark/protocol.h"
#include "quillmark/version.h"
