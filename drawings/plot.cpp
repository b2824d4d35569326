// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/plot_p.h"

#include "drawings/numbers_p.h"
#include "drawings/page_p.h"
#include "drawings/textwidth_p.h"

#include <algorithm>
#include <cmath>

namespace drawings {

namespace {

constexpr double flatness = 0.01;     // mm
constexpr double least_tick_x = 14.0; // mm between two ticks
constexpr double least_tick_y = 7.0;
constexpr double label_gap = 1.5;
constexpr double label_drop = 5.0;
constexpr double least_share = 0.125; // of the width, in height
constexpr double greatest_share = 0.75;

const Look grid_look = {"#d8d8d8", 0.12, {}, false};
const Look zero_look = {"#909090", 0.15, {}, false};
const Look frame_look = {"#404040", 0.2, {}, false};
const Look label_look = {"#000000", 0.0, {}, true};

// 1, 2 or 5 times a power of ten, and the number of decimals it needs.
struct Step {
    double length = 1.0;
    int decimals = 0;
};

Step step_of_at_least(double length) {
    const int power = int(std::floor(std::log10(length)));
    for (const int digit : {1, 2, 5}) {
        const double step = digit * std::pow(10.0, power);
        if (step >= length)
            return {step, std::max(-power, 0)};
    }
    return {std::pow(10.0, power + 1), std::max(-power - 1, 0)};
}

// Places labels only where they overlap no other label.
class Labels {
public:
    explicit Labels(Scene& given) : scene(given) {}

    void put(QPointF at, const QString& text) {
        const Text label = {at, label_height, text};
        const QRectF room = room_of(label).adjusted(-1.0, 0.0, 1.0, 0.0);
        for (const QRectF& other : taken) {
            if (other.intersects(room))
                return;
        }
        taken.push_back(room);
        scene.draw(label_look, label);
    }

private:
    Scene& scene;
    std::vector<QRectF> taken;
};

class Frame {
public:
    Frame(Scene& into, const QRectF& where, const QRectF& range)
        : scene(into), frame(where),
          scale(std::min(frame.width() / range.width(), frame.height() / range.height())),
          shift(frame.center() - scale * range.center()) {}

    void put_axes() {
        Labels labels(scene);
        const Step along = step_of_at_least(least_tick_x / scale);
        for (const double x : ticks(along.length, frame.left(), frame.right(), shift.x())) {
            const double at = shift.x() + scale * x;
            const QString text = QString::fromLatin1(decimal(x, along.decimals));
            put_grid({at, frame.top()}, {at, frame.bottom()}, x == 0.0);
            labels.put({at - 0.5 * width_of(text, label_height), frame.top() - label_drop}, text);
        }
        const Step up = step_of_at_least(least_tick_y / scale);
        for (const double y : ticks(up.length, frame.top(), frame.bottom(), shift.y())) {
            const double at = shift.y() + scale * y;
            const QString text = QString::fromLatin1(decimal(y, up.decimals));
            put_grid({frame.left(), at}, {frame.right(), at}, y == 0.0);
            labels.put(
                {frame.left() - label_gap - width_of(text, label_height), at - 0.5 * label_height},
                text);
        }
    }

    void put_edge() {
        scene.draw(frame_look, path_through({frame.topLeft(), frame.topRight(), frame.bottomRight(),
                                             frame.bottomLeft()},
                                            true));
    }

    void put_content(const Scene& content) {
        const Scene on_page = placed(content, scale, shift);
        for (const Element& element : on_page.elements) {
            if (const auto* path = std::get_if<Path>(&element.shape))
                put_path(element, *path);
            else if (frame.contains(place_of(element)))
                scene.elements.push_back(element);
        }
    }

private:
    std::vector<double> ticks(double step, double low, double high, double zero) const {
        std::vector<double> values;
        constexpr double rounding = 1e-6;
        const double first = std::ceil((low - zero) / scale / step - rounding);
        const double last = std::floor((high - zero) / scale / step + rounding);
        for (double i = first; i <= last; i += 1.0)
            values.push_back(i * step);
        return values;
    }

    void put_grid(QPointF from, QPointF to, bool is_zero) {
        scene.draw(is_zero ? zero_look : grid_look, line(from, to));
    }

    static QPointF place_of(const Element& element) {
        if (const auto* circle = std::get_if<Circle>(&element.shape))
            return circle->centre;
        const auto* dot = std::get_if<Dot>(&element.shape);
        return dot ? dot->at : QPointF();
    }

    bool holds(const Path& path) const {
        if (!frame.contains(path.start))
            return false;
        return std::all_of(path.segments.begin(), path.segments.end(), [this](const Segment& each) {
            for (int i = 0; i + 1 < each.degree; ++i) {
                if (!frame.contains(each.controls[std::size_t(i)]))
                    return false;
            }
            return frame.contains(each.end);
        });
    }

    // Puts the whole path if it is within the frame, otherwise the visible parts as straight lines.
    void put_path(const Element& element, const Path& path) {
        if (holds(path)) {
            scene.elements.push_back(element);
            return;
        }
        QPolygonF points = flattened(path, flatness);
        if (path.closed)
            points.append(path.start);
        QPolygonF part;
        const auto end_part = [&] {
            if (part.size() > 1)
                scene.draw(*element.look, path_through(part, false));
            part.clear();
        };
        for (qsizetype i = 1; i < points.size(); ++i) {
            const QPointF a = points[i - 1];
            const QPointF d = points[i] - a;
            const auto within = part_within(frame, a, points[i]);
            if (!within)
                continue;
            if (part.isEmpty() || within->first > 0.0) {
                end_part();
                part << a + within->first * d;
            }
            part << (within->second < 1.0 ? a + within->second * d : points[i]);
            if (within->second < 1.0)
                end_part();
        }
        end_part();
    }

    Scene& scene;
    const QRectF frame;
    const double scale;
    const QPointF shift;
};

} // namespace

double Plot::natural_height(double width) const {
    return std::clamp(width * range.height() / range.width(), least_share * width,
                      greatest_share * width);
}

void put_plot(Scene& scene, const Plot& plot, const QRectF& frame) {
    QStringList title = lines_of(plot.title, title_height, frame.width());
    for (qsizetype i = 0; i < title.size(); ++i) {
        const double y = frame.bottom() + 2.0 + double(title.size() - 1 - i) * title_step;
        scene.draw(label_look, Text{{frame.left(), y}, title_height, title[i]});
    }
    Frame place(scene, frame, plot.range);
    place.put_axes();
    place.put_content(plot.content);
    place.put_edge();
}

} // namespace drawings
