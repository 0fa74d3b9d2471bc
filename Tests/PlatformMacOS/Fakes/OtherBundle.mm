#import "Fakes/OtherBundle.h"

#include "Platform/macOS/FoundationValues.h"

#include <QDir>
#include <QFile>

namespace {

NSBundle *bundle;

id otherBundle(id, SEL)
{
    return bundle;
}

Method mainBundleMethod()
{
    return class_getClassMethod([NSBundle class], @selector(mainBundle));
}

} // namespace

OtherBundle::OtherBundle(const QString &path, const QByteArray &properties)
{
    QDir(path).mkpath(QStringLiteral("Resources"));
    // Where the Foundation of the tests looks for them.
    QFile file(QDir(path).filePath(QStringLiteral("Resources/Info-gnustep.plist")));
    if (!properties.isEmpty() && file.open(QIODevice::WriteOnly))
        file.write(properties);
    file.close();
    bundle = [[NSBundle alloc] initWithPath:foundationText(path)];
    m_real = method_setImplementation(mainBundleMethod(), reinterpret_cast<IMP>(otherBundle));
}

OtherBundle::~OtherBundle()
{
    method_setImplementation(mainBundleMethod(), m_real);
}
