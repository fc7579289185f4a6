// The component's fax job as the driver's print path uses it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PLUGIN_FAX_SESSION_H
#define DRIVER_PLUGIN_FAX_SESSION_H

#include "host/print_stream.h"

namespace quelm {

/// The page description language that carries a job's attribute lines.
enum class Pdl { dsc, pjl };

/// One fax job, reached through the loaded component. The order at print time: `setPdl`,
/// `checkInfo`, `serializeJob`, and `serializeCoverSheet` when `coverPageChosen`.
class FaxSession {
public:
    virtual ~FaxSession() = default;

    /// Chooses the form of the attribute lines.
    virtual void setPdl(Pdl pdl) = 0;

    /// True when the user chose a cover page and confirmed the fax dialog.
    [[nodiscard]] virtual bool coverPageChosen() = 0;

    /// False when the job has no recipient; the component then shows its fax dialog again.
    [[nodiscard]] virtual bool checkInfo() = 0;

    /// Writes the attribute lines. False when the component wrote none.
    [[nodiscard]] virtual bool serializeJob(AbstractPDLWriter& writer) = 0;

    /// Writes the cover page. False when it was not written whole.
    [[nodiscard]] virtual bool serializeCoverSheet(AbstractPDLWriter& writer) = 0;
};

} // namespace quelm

#endif
