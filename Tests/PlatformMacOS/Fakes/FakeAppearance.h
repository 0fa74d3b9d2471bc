#pragma once

#import <AppKit/AppKit.h>

#include <QColor>

/// An appearance of that name, dark and of high contrast as the name says.
NSAppearance *_Nonnull fakeAppearance(NSString *_Nonnull name);
/// Changes how the application looks, as observers of its property see.
void setApplicationAppearance(NSAppearance *_Nonnull appearance);
/// Changes what the user has asked for, as observers of the workspace hear.
void setMotionReduced(bool isReduced);
/// What a colour of the catalogue is in an appearance. Every colour is another one.
QColor catalogueColor(NSString *_Nonnull name, bool dark);
/// A colour without components, and a colour's name in the catalogue or nil.
NSColor *_Nonnull patternColor();
NSString *_Nullable catalogueName(NSColor *_Nonnull color);
