#pragma once

#import <Foundation/Foundation.h>

#include <QByteArray>
#include <QString>

#include <objc/runtime.h>

/// A bundle on the disk that the program lies in while this lives. At most one.
class OtherBundle {
public:
    /// Makes the folder; without properties it is no more than one.
    OtherBundle(const QString &path, const QByteArray &properties);
    ~OtherBundle();

private:
    IMP m_real;
};
