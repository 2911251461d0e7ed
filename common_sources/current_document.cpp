#include "common_sources/current_document.h"

#include "acdocman.h"

bool isCurrentDocument(const AcApDocument* documentP) try {
  const AcApDocument* const currentP = acDocManagerPtr()->curDocument();
  return currentP == nullptr || currentP == documentP;
} catch (...) {
  return true;
}

Acad::ErrorStatus sendText(AcApDocument* documentP, const wchar_t* text, Activate activate) {
  // The host must not be given a null document.
  if (documentP == nullptr) return Acad::eNoDocument;
  return acDocManagerPtr()->sendStringToExecute(documentP, text, activate == Activate::kYes, false, true);
}
