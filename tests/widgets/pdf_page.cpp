#include "widgets/pdf_page.h"

#include <QFile>
#include <QList>
#include <cmath>

namespace pdf {

namespace {

// x' = a x + c y + e, y' = b x + d y + f.
struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
};

// First `inner`, then `outer`.
Matrix Both(const Matrix& inner, const Matrix& outer) {
  return {inner.a * outer.a + inner.b * outer.c,
          inner.a * outer.b + inner.b * outer.d,
          inner.c * outer.a + inner.d * outer.c,
          inner.c * outer.b + inner.d * outer.d,
          inner.e * outer.a + inner.f * outer.c + outer.e,
          inner.e * outer.b + inner.f * outer.d + outer.f};
}

Point Under(const Matrix& m, double x, double y) {
  return {m.a * x + m.c * y + m.e, m.b * x + m.d * y + m.f};
}

QByteArray Whole(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The text of object `number`, up to its end.
QByteArray ObjectOf(const QByteArray& file, int number) {
  const QByteArray head = "\n" + QByteArray::number(number) + " 0 obj";
  const qsizetype from = file.indexOf(head);
  const qsizetype to = file.indexOf("endobj", from);
  return from < 0 || to < 0 ? QByteArray() : file.mid(from, to - from);
}

QByteArray Unpacked(const QByteArray& object) {
  const qsizetype head = object.indexOf("stream");
  const qsizetype from = object.indexOf('\n', head) + 1;
  const qsizetype to = object.lastIndexOf("endstream");
  if (head < 0 || from <= 0 || to < from) return QByteArray();
  const QByteArray packed = object.mid(from, to - from);
  if (!object.left(head).contains("/FlateDecode")) return packed;
  // In front the toolkit wants the length to begin with; it grows from there by itself.
  return qUncompress(QByteArray("\0\0\xFF\xFF", 4) + packed);
}

// The numbers behind a key, such as those in brackets; a reference is its object's number.
QList<double> NumbersBehind(const QByteArray& object, const QByteArray& key, int count) {
  QList<double> numbers;
  const qsizetype at = object.indexOf(key);
  if (at < 0) return numbers;
  QByteArray rest = object.mid(at + key.size(), 200);
  rest.replace('[', ' ').replace(']', ' ').replace('\n', ' ');
  for (const QByteArray& word : rest.simplified().split(' ')) {
    bool is = false;
    const double number = word.toDouble(&is);
    if (!is || numbers.size() == count) break;
    numbers.append(number);
  }
  return numbers;
}

struct State {
  Matrix matrix;
  double pen = 1;
};

// Follows the operators of a page.
class Reader {
 public:
  explicit Reader(Page& page) : page_(page) {}

  bool Read(const QByteArray& content) {
    for (const QByteArray& word : content.simplified().split(' ')) {
      bool number = false;
      const double value = word.toDouble(&number);
      if (number) {
        operands_.append(value);
      } else {
        Do(word);
        operands_.clear();
      }
    }
    return sound_ && saved_.isEmpty();
  }

 private:
  double Back(qsizetype i) {  // the i-th operand from the end, from 1
    if (i > operands_.size()) sound_ = false;
    return i > operands_.size() ? 0 : operands_[operands_.size() - i];
  }

  void Do(const QByteArray& word) {
    if (word == "q") saved_.append(state_);
    if (word == "Q") {
      sound_ = sound_ && !saved_.isEmpty();
      if (!saved_.isEmpty()) state_ = saved_.takeLast();
    }
    if (word == "cm") {
      const Matrix m = {Back(6), Back(5), Back(4), Back(3), Back(2), Back(1)};
      state_.matrix = Both(m, state_.matrix);
    }
    if (word == "w") state_.pen = Back(1);
    if (word == "Tj" || word.endsWith(">Tj")) ++page_.texts;
    DoPath(word);
  }

  void DoPath(const QByteArray& word) {
    if (word == "m") paths_.append(Path());
    if (word == "m" || word == "l" || word == "c") {
      if (paths_.isEmpty()) {
        sound_ = false;
        return;
      }
      paths_.last().points.push_back(Under(state_.matrix, Back(2), Back(1)));
      if (word == "c") paths_.last().curved = true;
    }
    if (word == "h" && !paths_.isEmpty()) {
      paths_.last().points.push_back(paths_.last().points.front());
    }
    if (word == "v" || word == "y") sound_ = false;  // curves that nothing here reads
    if (word == "S") Stroke();
    if (word == "S" || word == "n" || word == "f" || word == "f*") paths_.clear();
  }

  void Stroke() {
    const Matrix& m = state_.matrix;
    for (Path& path : paths_) {
      path.pen = state_.pen * std::sqrt(std::fabs(m.a * m.d - m.b * m.c));
      page_.strokes.push_back(path);
    }
  }

  Page& page_;
  State state_;
  QList<State> saved_;
  QList<double> operands_;
  QList<Path> paths_;
  bool sound_ = true;
};

}  // namespace

bool ReadFirstPage(const QString& file, Page& page) {
  const QByteArray all = Whole(file);
  if (!all.startsWith("%PDF-") || !all.contains("%%EOF")) return false;
  const qsizetype at = all.indexOf("/Type /Page\n");
  const QByteArray object = all.mid(at, all.indexOf("endobj", at) - at);
  const QList<double> box = NumbersBehind(object, "/MediaBox", 4);
  const QList<double> contents = NumbersBehind(object, "/Contents", 1);
  if (at < 0 || box.size() != 4 || contents.isEmpty()) return false;
  page = Page();
  page.width = box[2] - box[0];
  page.height = box[3] - box[1];
  const QByteArray drawn = Unpacked(ObjectOf(all, static_cast<int>(contents[0])));
  return !drawn.isEmpty() && Reader(page).Read(drawn);
}

int PageCount(const QString& file) { return static_cast<int>(Whole(file).count("/Type /Page\n")); }

}  // namespace pdf
