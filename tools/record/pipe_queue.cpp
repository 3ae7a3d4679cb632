#include "tools/record/pipe_queue.h"

#include <cerrno>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

void PipeQueue::open(FileDescriptor pipe)
{
    pipe_ = std::move(pipe);
    setNonBlocking(pipe_);
}

void PipeQueue::close()
{
    pipe_.close();
    chunks_.clear();
    written_ = 0;
    waiting_ = 0;
}

void PipeQueue::push(std::vector<std::uint8_t> bytes)
{
    if (pipe_.isOpen() && !bytes.empty()) {
        waiting_ += bytes.size();
        chunks_.push_back(std::move(bytes));
    }
}

bool PipeQueue::write()
{
    while (!chunks_.empty()) {
        const std::vector<std::uint8_t>& chunk = chunks_.front();
        const ssize_t count =
            ::write(pipe_.number(), chunk.data() + written_, chunk.size() - written_);
        if (count < 0) {
            return errno == EAGAIN || errno == EINTR;
        }
        written_ += static_cast<std::size_t>(count);
        waiting_ -= static_cast<std::size_t>(count);
        if (written_ == chunk.size()) {
            chunks_.pop_front();
            written_ = 0;
        }
    }
    return true;
}

bool PipeQueue::isUnread() const
{
    int bytes = 0;
    return ::ioctl(pipe_.number(), FIONREAD, &bytes) == 0 && bytes > 0;
}
