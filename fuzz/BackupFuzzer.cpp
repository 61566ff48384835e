// Any bytes through the backup reader. A refusal must say what is wrong. A
// document it accepts is a promise that restoring it and backing up again
// changes nothing: written again and read again it must give the same
// backup, and the same bytes every time.

#include "FuzzSupport.h"

#include "formats/FenrowBackup.h"

#include <variant>

using namespace fenrow;

namespace {

QString bothWritings(const QByteArray &first, const std::optional<QByteArray> &second)
{
    return QStringLiteral("first:\n") + QString::fromUtf8(first) + QStringLiteral("\nsecond:\n")
        + (second ? QString::fromUtf8(*second) : QStringLiteral("(cannot be written)"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::variant<FenrowBackup, BackupProblem> read = FenrowBackup::decoded(fuzz::bytesOf(data, size));
    if (const BackupProblem *problem = std::get_if<BackupProblem>(&read)) {
        fuzz::require(!problem->detail.isEmpty(), "a backup was refused without saying why");
        return 0;
    }
    const FenrowBackup &backup = std::get<FenrowBackup>(read);

    QString problem;
    const std::optional<QByteArray> written = backup.encoded(&problem);
    fuzz::require(written.has_value(), "a backup that was read cannot be written", [&] { return problem; });

    const std::variant<FenrowBackup, BackupProblem> reread = FenrowBackup::decoded(*written);
    const FenrowBackup *again = std::get_if<FenrowBackup>(&reread);
    fuzz::require(again != nullptr, "a backup as written is refused when read back", [&] {
        return std::get<BackupProblem>(reread).detail + u'\n' + QString::fromUtf8(*written);
    });

    const std::optional<QByteArray> rewritten = again->encoded();
    fuzz::require(*again == backup, "a backup read back differs from the one written",
                  [&] { return bothWritings(*written, rewritten); });
    fuzz::require(rewritten == written, "the same backup is written as different bytes",
                  [&] { return bothWritings(*written, rewritten); });
    return 0;
}
