#include <lathe.h>

struct Lathe::Inner {
  int count;
};

Visitor::~Visitor() {}

Lathe::Lathe() : m_steps(), m_inner(new Inner()) {}
Lathe::~Lathe() { delete m_inner; }

double Lathe::speed(SPINDLE spindle) const { return m_steps[spindle].speed; }

std::vector<double> Lathe::speeds() const { return {m_steps[0].speed, m_steps[1].speed}; }

void Lathe::visit(Visitor& visitor) const {
  for (const turning& step : m_steps) {
    visitor.begin(step);
    visitor.end(step);
  }
}

Lathe* lathe_create() { return new Lathe(); }

void lathe_free(Lathe* lathe) { delete lathe; }

int lathe_step(const Lathe* lathe, SPINDLE spindle, turning* step) {
  step->speed = lathe->speed(spindle);
  return 1;
}
