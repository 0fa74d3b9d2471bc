#import <Foundation/Foundation.h>

#include <QCoreApplication>
#include <QTemporaryDir>

namespace {

/// Foundation settles on the home folder when it is first asked anything, and complains of every
/// object that is let go of without a pool.
void makeSurroundings()
{
    static const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    static_cast<void>([[NSAutoreleasePool alloc] init]);
}
Q_COREAPP_STARTUP_FUNCTION(makeSurroundings)

} // namespace
