#include "builder/design_check/design_check.h"

#include "builder/design_check/design_checks.h"

namespace bw {

std::vector<DesignFinding> CheckDesign(const WorkingCopy& copy, Language language) {
    const CheckedDesign design{copy, {copy, language}};
    FindingList findings(language);
    CheckTextPlaces(design, findings);
    CheckCharacters(design, findings);
    CheckOverlaps(design, findings);
    CheckSprites(design, findings);
    CheckTables(design, findings);
    return findings.Take();
}

}  // namespace bw
