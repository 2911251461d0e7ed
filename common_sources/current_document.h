/// The host's current document, and text for a document's command line. Main thread.
#ifndef COMMON_SOURCES_CURRENT_DOCUMENT_H
#define COMMON_SOURCES_CURRENT_DOCUMENT_H

#include "acadstrc.h"

class AcApDocument;

/// True also when the host has no current document any more, or fails to report it. Does not throw.
bool isCurrentDocument(const AcApDocument* documentP);

enum class Activate { kNo, kYes };

/// Queues a text for the document's command line; eNoDocument without a document. Throws what the host
/// throws.
Acad::ErrorStatus sendText(AcApDocument* documentP, const wchar_t* text, Activate activate);

#endif
