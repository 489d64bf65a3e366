// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include <orvane/VCGLEyeDiagram.h>
#include <orvane/VCGLIQDiagram.h>
#include <orvane/VCGLTimeDiagram.h>
#include <orvane/platform/values/ListFeed.h>
#include <orvane/platform/values/Tree.h>
#include <orvane/platform/values/Values.h>

#include <QtWidgets>
#include <cmath>
#include <thread>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    for (const char* list : {"I", "Q", "Starts"})
        values::Tree::Instance().Create<values::ValueList<double>>(list);
    values::Tree::Instance().Create<values::Value<bool>>("New");
    QSplitter window;
    VCGLTimeDiagram time(&window);
    VCGLEyeDiagram eye(&window);
    VCGLIQDiagram iq(&window);
    const auto bind = [](auto& view, const char* second, auto setSecond) {
        view.SetData1_ValuePath("I");
        (view.*setSecond)(second);
        view.SetHasChangedTrigger_ValuePath("New");
    };
    bind(time, "Starts", &VCGLTimeDiagram::SetBaudrateData_ValuePath);
    bind(eye, "Starts", &VCGLEyeDiagram::SetBaudrateData_ValuePath);
    bind(iq, "Q", &VCGLIQDiagram::SetData2_ValuePath);
    time.SetXAxisRange(-64.0, 0.0); // symbols...
    time.SetBaudrate(16.0);         // ...of 16 samples
    window.resize(1200, 400);
    window.show();

    values::ListFeed feed({"I", "Q", "Starts"}, "New");
    std::atomic<bool> isOn{true};
    std::thread producer([&] {
        for (double t = 0.0; isOn; t += 2.0) { // two symbols at a time
            values::ListFeed::Block block(3, std::vector<double>(32));
            for (std::size_t k = 0; k < 32; ++k) {
                block[0][k] = 0.8 * std::cos(3.14 * (t + double(k) / 16.0));
                block[1][k] = 0.8 * std::sin(3.14 * (t + double(k) / 16.0));
            }
            block[2][0] = 32.0; // one trace, from the first sample on
            feed.push(std::move(block));
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    const int result = application.exec();
    isOn = false;
    producer.join();
    return result;
}
