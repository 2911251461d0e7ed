/// Findings from the log's settings and the log itself: a log that cannot be written, one that fills, its
/// last errors.
#ifndef PACKAGING_LM_CHECK_LOG_CHECK_H
#define PACKAGING_LM_CHECK_LOG_CHECK_H

#include "packaging/lm_check/finding.h"
#include "packaging/lm_check/profile.h"

class EffectiveSettings;

/// Whether the profile is this machine's own, or a copy that must not be changed and whose full paths lead
/// nowhere.
enum class ProfileKind { kOwn, kCopy };

Findings checkLog(const Profile& profile, const EffectiveSettings& settings, ProfileKind kind);

#endif
