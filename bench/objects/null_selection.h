/// A pre-selection of any size whose host calls do nothing, so that a benchmark sees the module's own share
/// of moving it.
#ifndef BENCH_NULL_SELECTION_H
#define BENCH_NULL_SELECTION_H

/// Entities in the pre-selection from now on.
void selectNullEntities(int count);

#endif
