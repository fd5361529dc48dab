// Components that share one width.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace orv::gui::component::qt {

/// The widest wish of its members. Worked out when it is asked for.
class Column {
 public:
  class Member {
   public:
    virtual int GetWish() const = 0;
    /// The column has another width.
    virtual void Relayout() = 0;

   protected:
    ~Member() = default;
  };

  void Add(Member* member) { m_members.push_back(member); }
  void Remove(Member* member);
  int GetWidth();
  /// A member wishes another width: the layouts of all are done anew.
  void Invalidate();

 private:
  std::vector<Member*> m_members;
  int m_width = -1;
};

/// Columns of one root by their names.
using Columns = std::map<std::string, Column>;

}  // namespace orv::gui::component::qt
