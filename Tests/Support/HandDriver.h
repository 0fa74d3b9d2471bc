#pragma once

#include <QAnimationDriver>
#include <QCoreApplication>
#include <QVariantAnimation>

/// The clock of all animations, turned by hand in the steps of a screen.
class HandDriver : public QAnimationDriver {
public:
    HandDriver()
    {
        install();
        // With nothing but pauses to run, Qt would turn to the real clock.
        m_unrest.setLoopCount(-1);
        m_unrest.setEndValue(1);
        m_unrest.start();
    }
    ~HandDriver() override { uninstall(); }

    qint64 elapsed() const override { return m_now; }
    /// From here on the times count.
    void setZero() { m_zero = m_now; }
    void turnTo(int milliseconds)
    {
        do {
            QCoreApplication::processEvents();
            m_now = std::min(m_now + 16, m_zero + milliseconds);
            advanceAnimation();
            QCoreApplication::processEvents();
        } while (m_now < m_zero + milliseconds);
    }

private:
    qint64 m_now = 0;
    qint64 m_zero = 0;
    QVariantAnimation m_unrest;
};
