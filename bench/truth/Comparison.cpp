// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Comparison.h"

#include "Measurement.h"

#include <algorithm>
#include <cmath>
#include <limits>

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
    result.kind = truth.kind;
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

/// Levels and eyes of one signal share a column.
QString column(const Result& result)
{
    QStringList names = result.path.split(QLatin1Char('.'));
    names.replaceInStrings(QStringLiteral("#"), QStringLiteral("count"));
    const auto isPlain = [](const QString& name) {
        return name[0].isDigit() || name == QLatin1String("eye") || name == QLatin1String("eyes") ||
               name == QLatin1String("constellation");
    };
    names.erase(std::remove_if(names.begin(), names.end(), isPlain), names.end());
    return names.join(QLatin1Char(' '));
}

/// What a column says of a case: of several levels or eyes, the one that is worst against its goal.
QString cell(const std::vector<Result>& results, const QString& name)
{
    const Result* worst = nullptr;
    const auto excess = [](const Result& result) {
        return result.isGood ? std::abs(result.meanError) / std::max(result.goal, 1e-300)
                             : std::numeric_limits<double>::infinity();
    };
    for (const Result& result : results) {
        if (column(result) == name && (worst == nullptr || excess(result) > excess(*worst)))
            worst = &result;
    }
    if (worst == nullptr)
        return {};
    if (!worst->remark.isEmpty())
        return QLatin1String(worst->isGood ? "none" : "**none**");
    const bool isLimit = worst->kind == Kind::AtLeast;
    const QString text = QStringLiteral("%1 ± %2 (%3%4)")
                             .arg(worst->meanError + (isLimit ? worst->truth : 0.0), 0, 'g', 3)
                             .arg(worst->deviation, 0, 'g', 2)
                             .arg(QString::fromUtf8(isLimit ? "≥ " : ""))
                             .arg(isLimit ? worst->truth : worst->goal, 0, 'g', 3);
    return worst->isGood ? text : QStringLiteral("**%1**").arg(text);
}

} // namespace

Result compare(const Truth& truth, const Trials& trials)
{
    if (truth.kind == Kind::Nothing)
        return nothing(truth, trials);
    Result result;
    result.path = truth.path;
    result.kind = truth.kind;
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
    QString text = QStringLiteral("# Figures against their truth\n\n"
                                  "By bench_truth; [how, and what the figures are](measuring.md). "
                                  "Mean error ± deviation of the errors (goal of the mean error), "
                                  "or, with a lower limit, mean ± deviation (≥ limit). Of several "
                                  "levels or eyes, the one nearest to its goal. Bold: missed.\n");
    for (auto first = outcomes.begin(); first != outcomes.end();) {
        const auto end = std::find_if(first, outcomes.end(), [&](const Outcome& outcome) {
            return outcome.group != first->group;
        });
        QStringList columns;
        for (auto outcome = first; outcome != end; ++outcome) {
            for (const Result& result : outcome->results)
                columns += column(result);
        }
        columns.removeDuplicates();
        text += QStringLiteral("\n## %1\n\n| case | %2 |\n|---")
                    .arg(first->group, columns.join(" | ")) +
                QStringLiteral("|---").repeated(columns.size()) + QLatin1String("|\n");
        for (; first != end; ++first) {
            text += QStringLiteral("| %1 |").arg(first->name);
            for (const QString& name : columns)
                text += QStringLiteral(" %1 |").arg(cell(first->results, name));
            text += QLatin1Char('\n');
        }
    }
    return text;
}
