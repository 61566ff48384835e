#pragma once

#include "domain/FlowFileImport.h"

#include <QByteArray>

#include <functional>
#include <optional>

class QCoreApplication;

namespace fenrow {

// The headless front end: `fenrow <subcommand> …`.
namespace CommandLine {
// The subcommand the arguments name ("--help", "-h" and "--version"
// count as one), or empty when they start the desktop program.
QByteArray subcommand(int argc, char *argv[]);
bool hasSubcommand(int argc, char *argv[]);
// Subcommands that draw a preview of a picture or a document, and so need
// the image libraries the lean `fenrow` leaves out.
bool drawsPreviews(const QByteArray &subcommand);

// Draws the preview of an attached file; only a program linked with the
// image libraries has one to give.
using PreviewMaker = std::function<std::optional<QByteArray>(const FlowFileImport::Payload &)>;

// Runs the subcommand and returns the process exit status.
int run(QCoreApplication &application, const PreviewMaker &previews = {});
} // namespace CommandLine

} // namespace fenrow
