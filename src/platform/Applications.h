#pragma once

#include <QString>
#include <QUrl>

#include <cstdint>
#include <vector>

namespace tirlo {

/// The bundle identifier that this program itself runs under.
inline constexpr QLatin1String ownBundleIdentifier("org.skerryapp.Skerry");

/// A handle on one running application of the desktop.
struct RunningApplication
{
    /// 0 where the application doesn't tell.
    std::int64_t processId = 0;
    /// The name by which the product knows the application, such as "com.microsoft.VSCode"; empty
    /// for an application that it doesn't know.
    QString bundleIdentifier;
    /// The name that the user knows it by.
    QString name;

    bool operator==(const RunningApplication &) const = default;
};

/// The applications of the desktop: which run, and how to get at one.
class Applications
{
public:
    virtual ~Applications() = default;

    /// The applications that have windows, the one in front first.
    [[nodiscard]] virtual std::vector<RunningApplication> running() const = 0;

    /// Brings the application's front-most window to the front; false when it has none.
    virtual bool activate(const RunningApplication &application) = 0;

    /// Brings the application to the front, starting it if it isn't running.
    ///
    /// False, and nothing else, when it is unknown or not installed.
    virtual bool open(const QString &bundleIdentifier) = 0;

    /// Shows a web page in the user's browser; false where there is none.
    ///
    /// False, and nothing else, for an address that is not http or https.
    virtual bool openUrl(const QUrl &url) = 0;
};

} // namespace tirlo
