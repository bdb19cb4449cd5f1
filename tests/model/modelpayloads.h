#pragma once

#include "modelhost.h"

#include <any>

/// Returns a random payload for a port service; the same one for the same @p value.
ModelPayload netPayload(quint32 value);
ModelPayload usbPayload(quint32 value);

/// Returns @p payload as the services deliver it.
std::any asNetReport(const ModelPayload &payload);
std::any asUsbReport(const ModelPayload &payload);
