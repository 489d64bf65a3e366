// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Comparison.h"

#include "Measurement.h"

#include <algorithm>
#include <cmath>

namespace {

using Kind = Truth::Kind;
using Trials = std::vector<std::vector<QJsonObject>>;

constexpr double fewDeviations = 2.0;  // by which the mean of all trials may be off by chance
constexpr double manyDeviations = 4.0; // by which one may

QString number(double value) { return QString::number(value, 'g', 4); }

struct Errors
{
    std::vector<double> values;
    double sum = 0.0;
    int missing = 0;
    QString reason;

    void add(const QJsonObject& object, const Truth& truth, double value)
    {
        const std::optional<double> measured = figure(object, truth.path);
        if (!measured) {
            ++missing;
            if (reason.isEmpty())
                reason = ::reason(object, truth.path);
            return;
        }
        const bool isSigned = truth.kind != Kind::Magnitude;
        values.push_back((isSigned ? *measured : std::abs(*measured)) - value);
        sum += *measured;
    }
    double count() const { return static_cast<double>(values.size()); }
    double mean() const
    {
        double total = 0.0;
        for (const double value : values)
            total += value;
        return total / count();
    }
    double deviation() const
    {
        double total = 0.0;
        for (const double value : values)
            total += (value - mean()) * (value - mean());
        return count() > 1.0 ? std::sqrt(total / (count() - 1.0)) : 0.0;
    }
    double worst() const
    {
        return *std::max_element(values.begin(), values.end(),
                                 [](double a, double b) { return std::abs(a) < std::abs(b); });
    }
};

Errors errorsOf(const Truth& truth, const Trials& trials)
{
    Errors errors;
    for (const std::vector<QJsonObject>& forms : trials) {
        if (truth.kind != Kind::Same) {
            errors.add(forms.front(), truth, truth.value);
            continue;
        }
        const double first =
            figure(forms.front(), truth.path).value_or(std::numeric_limits<double>::quiet_NaN());
        for (std::size_t k = 1; k < forms.size(); ++k)
            errors.add(forms[k], truth, first);
    }
    return errors;
}

Result nothing(const Truth& truth, const Trials& trials)
{
    Result result;
    result.path = truth.path;
    result.isGood = true;
    for (const std::vector<QJsonObject>& forms : trials) {
        result.remark = reason(forms.front(), truth.path);
        result.isGood = result.isGood && !figure(forms.front(), truth.path) &&
                        !forms.front().isEmpty() && !result.remark.isEmpty();
    }
    return result;
}

/// The reported deviation against the observed one. That of few trials is itself uncertain.
void compareScatter(const Truth& truth, const Trials& trials, Result& result)
{
    Truth other;
    other.path = truth.of;
    const Errors observed = errorsOf(other, trials);
    if (observed.values.size() < 3) {
        result.remark = QStringLiteral("too few trials");
        return;
    }
    const double uncertain = 2.0 / std::sqrt(2.0 * (observed.count() - 1.0));
    const double reported = result.meanError;
    result.truth = observed.deviation();
    result.meanError = reported - result.truth;
    result.worst = result.meanError;
    result.goal = result.truth * (1.0 + 2.0 * uncertain);
    const double factor = 2.0 * (1.0 + uncertain);
    result.isGood = reported > result.truth / factor && reported < result.truth * factor;
}

} // namespace

Result compare(const Truth& truth, const Trials& trials)
{
    if (truth.kind == Kind::Nothing)
        return nothing(truth, trials);
    Result result;
    result.path = truth.path;
    result.truth = truth.value;
    const Errors errors = errorsOf(truth, trials);
    if (errors.missing > 0 || errors.values.empty()) {
        result.remark = QStringLiteral("%1 missing: %2").arg(errors.missing).arg(errors.reason);
        if (errors.values.empty())
            return result;
    }
    result.meanError = errors.mean();
    result.deviation = errors.deviation();
    result.worst = errors.worst();
    result.goal = truth.tolerance + fewDeviations * truth.deviation / std::sqrt(errors.count());
    if (truth.kind == Kind::Scatter)
        compareScatter(truth, trials, result);
    else if (truth.kind == Kind::AtLeast)
        result.isGood = *std::min_element(errors.values.begin(), errors.values.end()) >= 0.0;
    else
        result.isGood =
            std::abs(result.meanError) <= result.goal &&
            std::abs(result.worst) <= truth.tolerance + manyDeviations * truth.deviation;
    result.isGood = result.isGood && errors.missing == 0;
    return result;
}

QString asText(const QString& name, const std::vector<Result>& results)
{
    QString text = name + QLatin1Char('\n');
    for (const Result& result : results)
        text += QStringLiteral("  %1 %2 truth %3 error %4 +- %5 worst %6 goal %7 %8\n")
                    .arg(QLatin1String(result.isGood ? "    " : "MISS"))
                    .arg(result.path, -30)
                    .arg(number(result.truth), -10)
                    .arg(number(result.meanError), -10)
                    .arg(number(result.deviation), -9)
                    .arg(number(result.worst), -10)
                    .arg(number(result.goal), -9)
                    .arg(result.remark);
    return text;
}

QString asMarkdown(const std::vector<Outcome>& outcomes)
{
    QString text;
    for (auto first = outcomes.begin(); first != outcomes.end();) {
        const auto end = std::find_if(first, outcomes.end(), [&](const Outcome& outcome) {
            return outcome.group != first->group;
        });
        QStringList columns;
        for (auto outcome = first; outcome != end; ++outcome) {
            for (const Result& result : outcome->results) {
                if (!columns.contains(result.path))
                    columns += result.path;
            }
        }
        text += QStringLiteral("\n### %1\n\n| case | ").arg(first->group) +
                columns.join(QLatin1String(" | ")) + QLatin1String(" |\n|---") +
                QStringLiteral("|---").repeated(columns.size()) + QLatin1String("|\n");
        for (; first != end; ++first) {
            text += QStringLiteral("| %1").arg(first->name);
            for (const QString& column : columns) {
                const auto result =
                    std::find_if(first->results.begin(), first->results.end(),
                                 [&](const Result& one) { return one.path == column; });
                text += QLatin1String(" | ");
                if (result == first->results.end())
                    continue;
                const QString cell = QStringLiteral("%1: %2 ± %3 (%4)")
                                         .arg(number(result->truth), number(result->meanError),
                                              number(result->deviation), number(result->goal));
                text += result->isGood ? cell : QStringLiteral("**%1**").arg(cell);
            }
            text += QLatin1String(" |\n");
        }
    }
    return text;
}
