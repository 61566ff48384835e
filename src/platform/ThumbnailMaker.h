#pragma once

#include "domain/FlowFileImport.h"

#include <QByteArray>
#include <QSize>

#include <optional>

namespace fenrow {

// The small picture a file card shows: the first page of a PDF, or the
// image itself, no longer than 640 px on either side, as PNG. Hand `make`
// to FenrowStore::setThumbnailMaker.
class ThumbnailMaker {
public:
    static constexpr int maxSide = 640;

    // Nothing when the bytes hold no picture.
    static std::optional<QByteArray> make(const FlowFileImport::Payload &payload);
    // The size a picture is drawn at: never enlarged, each side at least 1.
    static QSize fittedSize(QSize size);
};

} // namespace fenrow
