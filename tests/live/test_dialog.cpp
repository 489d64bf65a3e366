// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/StreamDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>
#include <tuple>

namespace {

QLineEdit* addressOf(StreamDialog& dialog)
{
    return dialog.findChildren<QComboBox*>().first()->lineEdit();
}

QLineEdit* rateOf(StreamDialog& dialog)
{
    const auto edits = dialog.findChildren<QLineEdit*>();
    return edits.first() == addressOf(dialog) ? edits.last() : edits.first();
}

QPushButton* openButtonOf(StreamDialog& dialog)
{
    return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
}

void type(QLineEdit* field, const char* text)
{
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, QString::fromLatin1(text));
}

TEST(StreamDialog, OpensOnlyWhatIsCompleteAndRemembersIt)
{
    const std::tuple<const char*, const char*, bool, bool> rows[] = {
        // address, rate, can be opened, asks for a rate
        {"zmq://127.0.0.1:7777", "2.5e6", true, true},   {"zmq://127.0.0.1:7777", "", false, true},
        {"zmq://127.0.0.1:7777", "-1", false, true},     {"-", "48000", true, true},
        {"recording.wav", "48000", false, true},         {"soapy://driver=a", "1e6", true, true},
        {"soapy://driver=a, rate=1e6", "", true, false},
    };
    for (const auto& [address, rate, canOpen, asksRate] : rows) {
        SCOPED_TRACE(testing::Message() << address << " at " << rate);
        const QPointer<StreamDialog> watched(new StreamDialog);
        StreamDialog* dialog = watched;
        dialog->open();
        QLineEdit* field = rateOf(*dialog);
        type(field, rate);
        type(addressOf(*dialog), address);
        EXPECT_EQ(field->isEnabled(), asksRate);
        std::optional<Recording::Options> options;
        QObject::connect(
            dialog, &StreamDialog::streamChosen,
            [&](const QString&, const Recording::Options& chosen) { options = chosen; });
        QTest::mouseClick(openButtonOf(*dialog), Qt::LeftButton);
        ASSERT_EQ(options.has_value(), canOpen);
        dialog->close();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !watched; }));
        if (canOpen) {
            EXPECT_EQ(options->sampleRate.value_or(0.0), QByteArray(rate).toDouble());
            EXPECT_EQ(options->format.has_value(), !QByteArray(address).startsWith("soapy"));
            StreamDialog next;
            EXPECT_EQ(addressOf(next)->text(), address);
            EXPECT_EQ(rateOf(next)->text(), rate);
        }
    }
}

} // namespace
