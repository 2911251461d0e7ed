// A class of each that the host has a virtual table for, so that the compiler lays the tables out.
// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acdocman.h"
#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "gs.h"
#include "rxdlinkr.h"
#include "checks.inc"
// clang-format on

struct OfAcApDocManager : AcApDocManager {
  OfAcApDocManager();
};
struct OfAcEdCommandStack : AcEdCommandStack {
  OfAcEdCommandStack();
};
struct OfAcRxDynamicLinker : AcRxDynamicLinker {
  OfAcRxDynamicLinker();
};
struct OfAcRxDictionary : AcRxDictionary {
  OfAcRxDictionary();
};
struct OfAcGsView : AcGsView {
  OfAcGsView();
};
struct OfAcDbLine : AcDbLine {
  OfAcDbLine();
};
struct OfAcDbEntity : AcDbEntity {
  OfAcDbEntity();
};
struct OfAcDbViewport : AcDbViewport {
  OfAcDbViewport();
};
struct OfAcDbViewportTableRecord : AcDbViewportTableRecord {
  OfAcDbViewportTableRecord();
};
struct OfAcApDocManagerReactor : AcApDocManagerReactor {
  OfAcApDocManagerReactor();
  char mFirstOfTheModules = 0;
};
OfAcApDocManager::OfAcApDocManager() = default;
OfAcEdCommandStack::OfAcEdCommandStack() = default;
OfAcRxDynamicLinker::OfAcRxDynamicLinker() = default;
OfAcRxDictionary::OfAcRxDictionary() = default;
OfAcGsView::OfAcGsView() = default;
OfAcDbLine::OfAcDbLine() = default;
OfAcDbEntity::OfAcDbEntity() = default;
OfAcDbViewport::OfAcDbViewport() = default;
OfAcDbViewportTableRecord::OfAcDbViewportTableRecord() = default;
OfAcApDocManagerReactor::OfAcApDocManagerReactor() = default;
