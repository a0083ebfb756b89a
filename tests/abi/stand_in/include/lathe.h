// A small library of the same make as k5ax: an enum, a record, a class that hosts derive from, a class that
// they hold, and flat functions.
#ifndef LATHE_H
#define LATHE_H

#include <vector>

#define LATHE_API __attribute__((visibility("default")))

enum SPINDLE : int {
  SPINDLE_MAIN = 0,
  SPINDLE_SUB = 1,
};

typedef struct turning {
  double speed;
  int spindle;
  unsigned int flags;
} turning;

class LATHE_API Visitor {
 public:
  virtual ~Visitor();
  virtual void begin(const turning& step) = 0;
  virtual void end(const turning& step) = 0;
};

class LATHE_API Lathe {
 public:
  Lathe();
  ~Lathe();
  double speed(SPINDLE spindle) const;
  std::vector<double> speeds() const;
  void visit(Visitor& visitor) const;

 private:
  turning m_steps[2];
  struct Inner;
  Inner* m_inner;
};

extern "C" {
LATHE_API Lathe* lathe_create();
LATHE_API void lathe_free(Lathe* lathe);
LATHE_API int lathe_step(const Lathe* lathe, SPINDLE spindle, turning* step);
}

#endif
